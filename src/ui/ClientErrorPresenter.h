#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>

class AppContext;
class QWidget;

// One alert for each failure the context reports: the operation's title over the error's
// description and reason. Closing it dismisses the failure.
class ClientErrorPresenter : public QObject
{
    Q_OBJECT

public:
    ClientErrorPresenter(AppContext &context, QWidget *window);

    QMessageBox *alert() const { return m_alert; }

private:
    void present();

    AppContext &m_context;
    QWidget *m_window;
    QPointer<QMessageBox> m_alert;
};
