#include "ui/DropOverlay.h"

#include <QCoreApplication>
#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

DropOverlay::DropOverlay(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("dropOverlay"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *icon = new QLabel(this);
    icon->setPixmap(QIcon::fromTheme(QStringLiteral("document-import"), style()->standardIcon(QStyle::SP_ArrowDown))
                        .pixmap(64, 64));
    auto *text = new QLabel(QCoreApplication::translate("DropOverlay", "Drop Files here"), this);
    QFont font = text->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    text->setFont(font);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(icon, 0, Qt::AlignHCenter);
    layout->addWidget(text, 0, Qt::AlignHCenter);
    layout->addStretch();
    parent->installEventFilter(this);
    setGeometry(parent->rect());
    hide();
}

bool DropOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void DropOverlay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor shade = palette().color(QPalette::Window);
    shade.setAlpha(220);
    painter.fillRect(rect(), shade);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 3, Qt::DashLine));
    painter.drawRoundedRect(rect().adjusted(12, 12, -12, -12), 12, 12);
}
