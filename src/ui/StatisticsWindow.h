#pragma once

#include <QDialog>

class GlobalTransferInfo;
class QFormLayout;

// The server's statistics, kept current while the window is open: all-time totals and ratio, the
// session's waste, connected peers, and the disk cache and queue figures.
class StatisticsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit StatisticsWindow(const GlobalTransferInfo &transfer, QWidget *parent = nullptr);

    // "Title: value" per line, in the window's order; for tests and screen readers.
    QString text() const;

private:
    void refresh();

    const GlobalTransferInfo &m_transfer;
    QList<QFormLayout *> m_groups;
};
