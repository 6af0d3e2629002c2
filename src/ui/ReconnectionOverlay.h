#pragma once

#include <QWidget>

class AppContext;
class ReconnectionCountdown;
class QLabel;
class QPushButton;

// Covers its parent while the connection is lost: what broke it, when the next attempt comes, and
// a button to try at once.
class ReconnectionOverlay : public QWidget
{
    Q_OBJECT

public:
    ReconnectionOverlay(AppContext &context, ReconnectionCountdown &countdown, QWidget *parent);

    QLabel *errorLabel() const { return m_error; }
    QLabel *countdownLabel() const { return m_countdown; }
    QPushButton *reconnectButton() const { return m_reconnect; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    AppContext &m_context;
    ReconnectionCountdown &m_countdownLogic;
    QLabel *m_error;
    QLabel *m_countdown;
    QPushButton *m_reconnect;
};
