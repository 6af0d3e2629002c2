#pragma once

#include "core/UpdateCheck.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

// "Check for Updates": asks the release feed, then says what it found in a message box over the
// window, with a button that opens a newer release's page.
class UpdatePresenter : public QObject
{
    Q_OBJECT

public:
    UpdatePresenter(const QUrl &feed, QWidget &window);

    void check();
    void show(const UpdateCheck::Outcome &outcome);
    // The box of the last check while it shows.
    QMessageBox *message() const { return m_message; }

Q_SIGNALS:
    void shown();

private:
    QCoro::Task<> run();

    QWidget &m_window;
    UpdateCheck m_check;
    bool m_running = false;
    QPointer<QMessageBox> m_message;
};
