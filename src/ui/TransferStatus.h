#pragma once

#include <QWidget>

class AnswerPace;
class GlobalTransferInfo;
class QLabel;
class RateHistory;
class QToolButton;
class UserDefaults;

// The status bar's figures: connection status (the server's answer time in its tooltip), DHT nodes, free space, ratio, totals, rates, the
// alternative speed limits switch and the button that hides or shows the detail pane. The rates'
// tooltips carry a sparkline of the last minutes.
class TransferStatus : public QWidget
{
    Q_OBJECT

public:
    TransferStatus(GlobalTransferInfo &transfer, const RateHistory &rates, const AnswerPace &pace,
                   UserDefaults &defaults, QWidget *parent = nullptr);

    QString text() const; // everything shown, for tests and accessibility
    QToolButton *altSpeedSwitch() const { return m_altSpeed; }
    // The rates; a click asks for the global limit of that direction.
    QToolButton *rateButton(bool upload) const { return upload ? m_upRate : m_downRate; }
    QToolButton *tntDetailsToggle() const { return m_detailsToggle; }
    // The toggle offers the other state.
    void setTntDetailsHidden(bool hidden);
    // What a rate's tooltip shows now: its title over the sparkline, as rich text.
    QString rateToolTip(bool upload) const;

Q_SIGNALS:
    // The alternative speed limits switch was clicked; the next poll carries the server's mode.
    void altSpeedToggleRequested();
    void tntDetailsToggleRequested();
    void globalLimitRequested(bool upload);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();
    void showAnswerTime();

    GlobalTransferInfo &m_transfer;
    const RateHistory &m_rates;
    const AnswerPace &m_pace;
    UserDefaults &m_defaults;
    QLabel *m_connection;
    QLabel *m_dht;
    QLabel *m_freeSpace;
    QLabel *m_ratio;
    QLabel *m_downloaded;
    QLabel *m_uploaded;
    QToolButton *m_downRate;
    QToolButton *m_upRate;
    QToolButton *m_altSpeed;
    QToolButton *m_detailsToggle;
};
