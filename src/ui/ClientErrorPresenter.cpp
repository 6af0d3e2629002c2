#include "ui/ClientErrorPresenter.h"

#include "core/AppContext.h"

#include <QMessageBox>

ClientErrorPresenter::ClientErrorPresenter(AppContext &context, QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_window(window)
{
    connect(&m_context, &AppContext::clientErrorChanged, this, &ClientErrorPresenter::present);
    // A failure of the start itself (an unreadable settings file) came before the window.
    if (m_context.clientError())
        QMetaObject::invokeMethod(this, &ClientErrorPresenter::present, Qt::QueuedConnection);
}

void ClientErrorPresenter::present()
{
    const auto &error = m_context.clientError();
    if (m_alert) {
        // A newer failure replaces the one on screen; closing the old alert must not dismiss it.
        m_alert->disconnect(this);
        m_alert->close();
        m_alert = nullptr;
    }
    if (!error)
        return;
    QString details = error->description();
    if (!error->failureReason().isEmpty())
        details += (details.isEmpty() ? QString() : QStringLiteral("\n")) + error->failureReason();
    auto *alert =
        new QMessageBox(QMessageBox::Warning, QStringLiteral("Quillo"), error->title(), QMessageBox::Ok, m_window);
    alert->setInformativeText(details);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    connect(alert, &QMessageBox::finished, this, [this] {
        m_alert = nullptr;
        if (m_context.clientError())
            m_context.dismissClientError();
    });
    m_alert = alert;
    alert->open();
}
