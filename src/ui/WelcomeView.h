#pragma once

#include <QWidget>

class QPushButton;

// Shown while no connection is configured: what Quillo is for, and the two ways to begin.
class WelcomeView : public QWidget
{
    Q_OBJECT

public:
    explicit WelcomeView(QWidget *parent = nullptr);

    QPushButton *connectToServerButton() const { return m_connectToServer; }
    QPushButton *installLocallyButton() const { return m_installLocally; }

Q_SIGNALS:
    void connectToServerRequested();
    void installLocallyRequested();

private:
    QPushButton *m_connectToServer;
    QPushButton *m_installLocally;
};
