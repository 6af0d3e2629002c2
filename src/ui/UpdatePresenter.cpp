#include "ui/UpdatePresenter.h"

#include "api/AppInfo.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>

namespace {
const QString title = QCoreApplication::translate("UpdatePresenter", "Check for Updates");
}

UpdatePresenter::UpdatePresenter(const QUrl &feed, QWidget &window)
    : QObject(&window)
    , m_window(window)
    , m_check(feed, QVersionNumber::fromString(QString::fromUtf16(AppInfo::version)))
{}

void UpdatePresenter::check()
{
    // One question at a time: a second click while the feed is asked waits for the same answer.
    if (m_running)
        return;
    m_running = true;
    detached(run());
}

QCoro::Task<> UpdatePresenter::run()
{
    QPointer<UpdatePresenter> self(this);
    const UpdateCheck::Outcome outcome = co_await m_check.check();
    if (!self)
        co_return;
    m_running = false;
    show(outcome);
}

void UpdatePresenter::show(const UpdateCheck::Outcome &outcome)
{
    using Kind = UpdateCheck::Outcome::Kind;
    const auto icon = outcome.kind == Kind::failed ? QMessageBox::Warning : QMessageBox::Information;
    if (m_message)
        m_message->close();
    m_message = new QMessageBox(icon, title, outcome.text, QMessageBox::Close, &m_window);
    m_message->setAttribute(Qt::WA_DeleteOnClose);
    if (outcome.kind == Kind::available && outcome.page.isValid()) {
        QPushButton *open = m_message->addButton(QCoreApplication::translate("UpdatePresenter", "Open Release Page"),
                                                 QMessageBox::AcceptRole);
        m_message->setDefaultButton(open);
        connect(open, &QPushButton::clicked, this, [page = outcome.page] { QDesktopServices::openUrl(page); });
    }
    m_message->open();
    Q_EMIT shown();
}
