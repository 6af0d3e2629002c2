#include "ui/TntSpeedPage.h"

#include "ui/RateGraph.h"

#include <QLabel>
#include <QVBoxLayout>

TntSpeedPage::TntSpeedPage(RateHistory &tntRates, RateHistory &transferRates, QWidget *parent)
    : QWidget(parent)
    , m_tnt(new RateGraph(this))
    , m_transfer(new RateGraph(this))
{
    setObjectName(QStringLiteral("tntSpeed"));
    auto *layout = new QVBoxLayout(this);
    const auto add = [this, layout](const QString &title, RateGraph *graph, RateHistory &history) {
        layout->addWidget(new QLabel(title, this));
        graph->setHistory(&history);
        graph->setPlaceholder(QStringLiteral("Collecting rates…"));
        layout->addWidget(graph, 1);
    };
    add(QStringLiteral("This torrent"), m_tnt, tntRates);
    add(QStringLiteral("All torrents"), m_transfer, transferRates);
    layout->addWidget(new QLabel(QStringLiteral("<span style='color:%1'>▼ Download</span>&nbsp;&nbsp;&nbsp;"
                                                "<span style='color:%2'>▲ Upload</span>&nbsp;&nbsp;&nbsp;"
                                                "<span style='background-color:%3'>&nbsp;&nbsp;&nbsp;&nbsp;</span>"
                                                "&nbsp;Alternative speed limits on")
                                     .arg(RateGraph::downColour.name(), RateGraph::upColour.name(),
                                          RateGraph::alternativeColour.name(QColor::HexArgb)),
                                 this));
}
