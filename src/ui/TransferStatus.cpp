#include "ui/TransferStatus.h"

#include "model/AnswerPace.h"
#include "model/GlobalTransferInfo.h"
#include "model/RateHistory.h"
#include "settings/UserDefaults.h"
#include "ui/RateGraph.h"
#include "ui/SidebarIcons.h"
#include "ui/TntTableModel.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QToolButton>
#include <QToolTip>

namespace {

QString connectionText(API::ConnectionStatus status)
{
    switch (status) {
    case API::ConnectionStatus::connected: return QCoreApplication::translate("TransferStatus", "Connected");
    case API::ConnectionStatus::firewalled: return QCoreApplication::translate("TransferStatus", "Firewalled");
    case API::ConnectionStatus::disconnected: return QCoreApplication::translate("TransferStatus", "Disconnected");
    }
    return {};
}

} // namespace

TransferStatus::TransferStatus(GlobalTransferInfo &transfer, const RateHistory &rates, const AnswerPace &pace,
                               UserDefaults &defaults, QWidget *parent)
    : QWidget(parent)
    , m_transfer(transfer)
    , m_rates(rates)
    , m_pace(pace)
    , m_defaults(defaults)
    , m_connection(new QLabel(this))
    , m_dht(new QLabel(this))
    , m_freeSpace(new QLabel(this))
    , m_ratio(new QLabel(this))
    , m_downloaded(new QLabel(this))
    , m_uploaded(new QLabel(this))
    , m_downRate(new QToolButton(this))
    , m_upRate(new QToolButton(this))
    , m_altSpeed(new QToolButton(this))
    , m_detailsToggle(new QToolButton(this))
{
    m_altSpeed->setObjectName(QStringLiteral("altSpeedSwitch"));
    m_altSpeed->setCheckable(true);
    m_altSpeed->setAutoRaise(true);
    m_altSpeed->setText(tr("Alt. speed"));
    m_altSpeed->setToolTip(tr("Alternative speed limits"));
    m_altSpeed->setToolButtonStyle(Qt::ToolButtonIconOnly);
    // Only the server changes the mode: the button shows it, a click asks for the other one.
    connect(m_altSpeed, &QToolButton::clicked, this, [this] {
        m_altSpeed->setChecked(m_transfer.useAltSpeedLimits());
        Q_EMIT altSpeedToggleRequested();
    });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(16);
    for (QLabel *label : {m_connection, m_dht, m_freeSpace, m_ratio, m_downloaded, m_uploaded})
        layout->addWidget(label);
    layout->addStretch();
    for (QToolButton *rate : {m_downRate, m_upRate}) {
        rate->setAutoRaise(true);
        layout->addWidget(rate);
        connect(rate, &QToolButton::clicked, this, [this, rate] { Q_EMIT globalLimitRequested(rate == m_upRate); });
        rate->installEventFilter(this);
    }
    layout->addWidget(m_altSpeed);
    m_detailsToggle->setObjectName(QStringLiteral("tntDetailsToggle"));
    m_detailsToggle->setAutoRaise(true);
    connect(m_detailsToggle, &QToolButton::clicked, this, &TransferStatus::tntDetailsToggleRequested);
    setTntDetailsHidden(false);
    layout->addWidget(m_detailsToggle);
    connect(&transfer, &GlobalTransferInfo::changed, this, &TransferStatus::refresh);
    connect(&defaults, &UserDefaults::valueChanged, this, &TransferStatus::refresh);
    connect(&pace, &AnswerPace::changed, this, &TransferStatus::showAnswerTime);
    refresh();
    showAnswerTime();
}

void TransferStatus::showAnswerTime()
{
    const std::optional<AnswerPace::Duration> last = m_pace.last();
    m_connection->setToolTip(last ? tr("The server answered the last update in %1 ms (recently %2 ms).")
                                        .arg(locale().toString(last->count()), locale().toString(m_pace.smoothed().count()))
                                  : QString());
}

void TransferStatus::refresh()
{
    using K = UserDefaultsKey;
    using Direction = GlobalTransferInfo::TransferDirection;
    m_connection->setText(tr("Connection status: ") + connectionText(m_transfer.connectionStatus()));
    m_dht->setText(tr("DHT Nodes: %1").arg(m_transfer.dhtNodes()));
    m_freeSpace->setText(tr("Free Space: ") + TntFormat::size(std::max<qint64>(m_transfer.freeSpaceOnDisk(), 0)));
    m_freeSpace->setVisible(m_defaults.boolValue(K::showFreeSpace, true));
    m_ratio->setText(tr("Global Ratio: ") + m_transfer.globalRatio());
    m_ratio->setVisible(m_defaults.boolValue(K::showGlobalRatio, true));
    // One label per direction keeps the bar short: the session's total, then all time's, as switched
    // on; the tooltip names them.
    const bool session = m_defaults.boolValue(K::showSessionStats, true);
    const bool allTime = m_defaults.boolValue(K::showAllTimeStats, true);
    const auto showTotals = [&](QLabel *label, const QString &title, Direction direction) {
        const QString sessionTotal = TntFormat::size(m_transfer.sessionTotal(direction));
        const QString allTimeTotal = TntFormat::size(m_transfer.alltimeTotal(direction));
        QStringList shown;
        if (session)
            shown << sessionTotal;
        if (allTime)
            shown << allTimeTotal;
        label->setText(title + QStringLiteral(": ") + shown.join(QStringLiteral(" / ")));
        label->setToolTip(tr("This session: %1\nAll time: %2").arg(sessionTotal, allTimeTotal));
        label->setVisible(!shown.isEmpty());
    };
    showTotals(m_downloaded, tr("Downloaded"), Direction::down);
    showTotals(m_uploaded, tr("Uploaded"), Direction::up);
    // Pressed and filled while the limits are on.
    const bool alternative = m_transfer.useAltSpeedLimits();
    m_altSpeed->setChecked(alternative);
    m_altSpeed->setIcon(SidebarIcons::forSymbol(alternative ? u"flame.fill" : u"flame"));
    m_downRate->setText(QStringLiteral("▼ ") + TntFormat::rateOrZero(m_transfer.rate(Direction::down)));
    m_upRate->setText(QStringLiteral("▲ ") + TntFormat::rateOrZero(m_transfer.rate(Direction::up)));
}

void TransferStatus::setTntDetailsHidden(bool hidden)
{
    const QString text = hidden ? tr("Show torrent details") : tr("Hide torrent details");
    m_detailsToggle->setText(text);
    m_detailsToggle->setToolTip(text);
}

QString TransferStatus::rateToolTip(bool upload) const
{
    const QString title = upload ? tr("Global upload limit") : tr("Global download limit");
    if (m_rates.samples().size() < 2)
        return title;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    const qreal ratio = devicePixelRatioF();
    const QSize shown(220, 48);
    QImage picture = RateGraph::sparkline(m_rates, shown * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.save(&buffer, "PNG");
    return QStringLiteral("<p style='white-space:pre'>%1</p><img src='data:image/png;base64,%2' width=%3 height=%4>")
        .arg(title, QString::fromLatin1(png.toBase64()))
        .arg(shown.width())
        .arg(shown.height());
}

// The tooltip is made when asked for: the sparkline is drawn only for someone who looks at it.
bool TransferStatus::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip && (watched == m_downRate || watched == m_upRate)) {
        auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), rateToolTip(watched == m_upRate), static_cast<QWidget *>(watched));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

QString TransferStatus::text() const
{
    QStringList parts;
    for (const QLabel *label : {m_connection, m_dht, m_freeSpace, m_ratio, m_downloaded, m_uploaded}) {
        if (!label->isHidden())
            parts << label->text();
    }
    parts << m_downRate->text() + QStringLiteral("   ") + m_upRate->text();
    return parts.join(QStringLiteral(" | "));
}
