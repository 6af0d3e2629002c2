#include "ui/TntSpeedPage.h"

#include "ui/RateGraph.h"

#include <QCoreApplication>
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
        graph->setPlaceholder(QCoreApplication::translate("TntSpeedPage", "Collecting rates…"));
        layout->addWidget(graph, 1);
    };
    add(QCoreApplication::translate("TntSpeedPage", "This torrent"), m_tnt, tntRates);
    add(QCoreApplication::translate("TntSpeedPage", "All torrents"), m_transfer, transferRates);
    layout->addWidget(new QLabel(
        QStringLiteral("<span style='color:%1'>▼ %2</span>&nbsp;&nbsp;&nbsp;"
                       "<span style='color:%3'>▲ %4</span>&nbsp;&nbsp;&nbsp;"
                       "<span style='background-color:%5'>&nbsp;&nbsp;&nbsp;&nbsp;</span>"
                       "&nbsp;%6")
            .arg(RateGraph::downColour.name(), QCoreApplication::translate("TntSpeedPage", "Download").toHtmlEscaped(),
                 RateGraph::upColour.name(), QCoreApplication::translate("TntSpeedPage", "Upload").toHtmlEscaped(),
                 RateGraph::alternativeColour.name(QColor::HexArgb),
                 QCoreApplication::translate("TntSpeedPage", "Alternative speed limits on").toHtmlEscaped()),
        this));
}
