#pragma once

#include <QDialog>

class LocalDaemonInstaller;
class QLabel;
class QProgressBar;
class QPushButton;

// What the local installer is doing, over the window: its phase, the attempts while it waits, why
// it failed with "Try Again", the command to paste when no terminal could run it, and "Cancel"
// at every step. It closes itself once the connection is made.
class LocalDaemonSheet : public QDialog
{
    Q_OBJECT

public:
    LocalDaemonSheet(LocalDaemonInstaller &installer, QWidget *parent);

    QLabel *statusLabel() const { return m_status; }
    QLabel *detailLabel() const { return m_detail; }
    QPushButton *tryAgainButton() const { return m_tryAgain; }
    QPushButton *cancelButton() const { return m_cancel; }

private:
    void showPhase();

    LocalDaemonInstaller &m_installer;
    QLabel *m_status;
    QLabel *m_detail;
    QProgressBar *m_progress;
    QPushButton *m_tryAgain;
    QPushButton *m_cancel;
    bool m_copiedCommand = false;
};
