#include "ui/WelcomeView.h"

#include "ui/PlatformTexts.h"

#include <QCoreApplication>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QPushButton *makeChoice(const QString &title, const QString &detail, const QString &iconName, QWidget *parent)
{
    auto *button = new QPushButton(parent);
    button->setObjectName(title);
    button->setIcon(QIcon::fromTheme(iconName));
    button->setIconSize(QSize(32, 32));
    button->setText(title + u'\n' + detail);
    button->setFixedSize(400, 72);
    button->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding: 8px 14px; }"));
    return button;
}

} // namespace

WelcomeView::WelcomeView(QWidget *parent)
    : QWidget(parent)
{
    auto *title = new QLabel(QCoreApplication::translate("WelcomeView", "Welcome to Quillo"), this);
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 2.0);
    titleFont.setBold(true);
    title->setFont(titleFont);
    title->setAlignment(Qt::AlignCenter);

    auto *subtitle = new QLabel(
        QCoreApplication::translate("WelcomeView", "Connect to qBittorrent to start managing your torrents."), this);
    subtitle->setAlignment(Qt::AlignCenter);

    m_connectToServer =
        makeChoice(QCoreApplication::translate("WelcomeView", "Connect to a Server"),
                   QCoreApplication::translate("WelcomeView", "Use qBittorrent running on another computer or a NAS."),
                   QStringLiteral("network-server"), this);
    m_installLocally =
        makeChoice(QCoreApplication::translate("WelcomeView", "Install on ") + PlatformTexts::thisMac(),
                   QCoreApplication::translate("WelcomeView", "Download qBittorrent and run it in the background."),
                   QStringLiteral("computer"), this);

    connect(m_connectToServer, &QPushButton::clicked, this, &WelcomeView::connectToServerRequested);
    connect(m_installLocally, &QPushButton::clicked, this, &WelcomeView::installLocallyRequested);

    auto *layout = new QVBoxLayout(this);
    layout->addStretch(2);
    layout->addWidget(title);
    layout->addWidget(subtitle);
    layout->addSpacing(24);
    layout->addWidget(m_connectToServer, 0, Qt::AlignHCenter);
    layout->addWidget(m_installLocally, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}
