#pragma once

#include <QWidget>

class RateGraph;
class RateHistory;

// The detail pane's Speed tab: the shown torrent's rates since it was shown, and the whole
// transfer's, each as a graph, with the legend they share.
class TntSpeedPage : public QWidget
{
    Q_OBJECT

public:
    TntSpeedPage(RateHistory &tntRates, RateHistory &transferRates, QWidget *parent = nullptr);

    RateGraph *tntGraph() const { return m_tnt; }
    RateGraph *transferGraph() const { return m_transfer; }

private:
    RateGraph *m_tnt;
    RateGraph *m_transfer;
};
