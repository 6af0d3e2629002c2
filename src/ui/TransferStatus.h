#pragma once

#include <QWidget>

class GlobalTransferInfo;
class QLabel;
class UserDefaults;

// The status bar's figures: connection status, DHT nodes, free space, ratio, totals and rates.
class TransferStatus : public QWidget
{
    Q_OBJECT

public:
    TransferStatus(GlobalTransferInfo &transfer, UserDefaults &defaults, QWidget *parent = nullptr);

    QString text() const; // everything shown, for tests and accessibility

private:
    void refresh();

    GlobalTransferInfo &m_transfer;
    UserDefaults &m_defaults;
    QLabel *m_connection;
    QLabel *m_dht;
    QLabel *m_freeSpace;
    QLabel *m_ratio;
    QLabel *m_session;
    QLabel *m_allTime;
    QLabel *m_rates;
};
