#include "ui/TntTableModel.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace {

using F = TntModel::Field;

// Several screens of dates; bounded against a library whose dates are all different.
constexpr qsizetype dateTextsLimit = 8192;

// qBittorrent's "infinite" ETA: 100 days.
constexpr double infiniteEta = 8640000;

} // namespace

namespace TntFormat {

QString size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeIecFormat);
}

QString rate(qint64 bytesPerSecond)
{
    return bytesPerSecond <= 0 ? QString() : size(bytesPerSecond) + QStringLiteral("/s");
}

QString rateOrZero(qint64 bytesPerSecond)
{
    return bytesPerSecond > 0 ? rate(bytesPerSecond) : QStringLiteral("0 B/s");
}

QString eta(double seconds)
{
    if (seconds >= infiniteEta || seconds < 0)
        return QStringLiteral("∞");
    return duration(seconds);
}

QString duration(double seconds)
{
    const auto total = static_cast<qint64>(std::max(seconds, 0.0));
    const qint64 days = total / 86400;
    const qint64 hours = (total % 86400) / 3600;
    const qint64 minutes = (total % 3600) / 60;
    if (days > 0)
        return QCoreApplication::translate("TntTableModel", "%1d %2h").arg(days).arg(hours);
    if (hours > 0)
        return QCoreApplication::translate("TntTableModel", "%1h %2m").arg(hours).arg(minutes);
    if (minutes > 0)
        return QCoreApplication::translate("TntTableModel", "%1m").arg(minutes);
    return QCoreApplication::translate("TntTableModel", "%1s").arg(total);
}

QString ratio(double ratio)
{
    return ratio < 0 ? QStringLiteral("∞") : QLocale().toString(ratio, 'f', 2);
}

QString percent(double fraction)
{
    return QLocale().toString(fraction * 100, 'f', 1) + u'%';
}

// The server's "never" is -1 (one second before 1970); nothing earlier is a real date here.
QString date(const QDateTime &when)
{
    return date(when, QTimeZone::systemTimeZone());
}

QString date(const QDateTime &when, const QTimeZone &zone)
{
    if (!when.isValid() || when.toSecsSinceEpoch() <= 0)
        return {};
    return QLocale().toString(when.toTimeZone(zone), QLocale::ShortFormat);
}

} // namespace TntFormat

TntTableModel::TntTableModel(TntCollection &collection, QObject *parent)
    : KeyedRowsTableModel(collection, ColumnCount, parent)
    , m_collection(collection)
{}

QString TntTableModel::columnIdentifier(Column column)
{
    static const char *const identifiers[ColumnCount] = {
        "tnt_name_column",          "tnt_size_column",     "tnt_progress_column", "tnt_status_column",
        "tnt_down_speed_column",    "tnt_up_speed_column", "tnt_seed_column",     "tnt_peer_column",
        "tnt_eta_column",           "tnt_ratio_column",    "tnt_added_on_column", "tnt_completed_on_column",
        "tnt_seen_complete_column", "tnt_category_column", "tnt_tags_column",
    };
    return QString::fromLatin1(identifiers[column]);
}

TntModel::Fields TntTableModel::columnFields(Column column)
{
    switch (column) {
    case NameColumn: return F::Name;
    case SizeColumn: return F::Size;
    case ProgressColumn: return F::Progress | F::StateField;
    case StatusColumn: return F::StateField;
    case DownSpeedColumn: return F::Dlspeed;
    case UpSpeedColumn: return F::Upspeed;
    case SeedsColumn: return F::NumSeeds | F::NumComplete;
    case PeersColumn: return F::NumLeechs | F::NumIncomplete;
    case EtaColumn: return F::Eta;
    case RatioColumn: return F::Ratio;
    case AddedOnColumn: return F::AddedOn;
    case CompletedOnColumn: return F::CompletionOn;
    case SeenCompleteColumn: return F::SeenComplete;
    case CategoryColumn: return F::Category;
    case TagsColumn: return F::Tags;
    case ColumnCount: break;
    }
    return 0;
}

QVariant TntTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    static const char *const titles[ColumnCount] = {
        QT_TR_NOOP("Name"),          QT_TR_NOOP("Size"),     QT_TR_NOOP("Progress"), QT_TR_NOOP("Status"),
        QT_TR_NOOP("Down Speed"),    QT_TR_NOOP("Up Speed"), QT_TR_NOOP("Seeds"),    QT_TR_NOOP("Peers"),
        QT_TR_NOOP("ETA"),           QT_TR_NOOP("Ratio"),    QT_TR_NOOP("Added on"), QT_TR_NOOP("Completed On"),
        QT_TR_NOOP("Seen Complete"), QT_TR_NOOP("Category"), QT_TR_NOOP("Tags"),
    };
    return tr(titles[section]);
}

QVariant TntTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const TntModel &tnt = m_collection.at(index.row());
    const auto column = static_cast<Column>(index.column());
    switch (role) {
    case HashRole: return tnt.id();
    case StateRole: return static_cast<int>(tnt.state());
    case ProgressRole: return tnt.progress();
    case Qt::TextAlignmentRole:
        return column == NameColumn || column == StatusColumn || column == CategoryColumn || column == TagsColumn
                   ? QVariant()
                   : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole: return column == NameColumn ? QVariant(tnt.name()) : QVariant();
    case SortRole:
        switch (column) {
        case NameColumn: return tnt.name();
        case SizeColumn: return tnt.size();
        case ProgressColumn: return tnt.progress();
        case StatusColumn: return static_cast<int>(tnt.state());
        case DownSpeedColumn: return tnt.dlspeed();
        case UpSpeedColumn: return tnt.upspeed();
        case SeedsColumn: return tnt.numSeeds();
        case PeersColumn: return tnt.numLeechs();
        case EtaColumn: return tnt.eta();
        case RatioColumn: return tnt.ratio();
        case AddedOnColumn: return tnt.addedOn().secondsSinceEpoch();
        case CompletedOnColumn: return tnt.completionOn().secondsSinceEpoch();
        case SeenCompleteColumn: return tnt.seenComplete().secondsSinceEpoch();
        case CategoryColumn: return tnt.category();
        case TagsColumn: return tnt.tags();
        case ColumnCount: break;
        }
        return {};
    case Qt::DisplayRole:
        switch (column) {
        case NameColumn: return tnt.name();
        case SizeColumn: return TntFormat::size(tnt.size());
        case ProgressColumn: return TntFormat::percent(tnt.progress());
        case StatusColumn: return TntModel::stateTitle(tnt.state());
        case DownSpeedColumn: return TntFormat::rate(tnt.dlspeed());
        case UpSpeedColumn: return TntFormat::rate(tnt.upspeed());
        case SeedsColumn: return QStringLiteral("%1 (%2)").arg(tnt.numSeeds()).arg(tnt.numComplete());
        case PeersColumn: return QStringLiteral("%1 (%2)").arg(tnt.numLeechs()).arg(tnt.numIncomplete());
        case EtaColumn: return TntFormat::eta(tnt.eta());
        case RatioColumn: return TntFormat::ratio(tnt.ratio());
        case AddedOnColumn: return dateText(tnt.addedOn());
        case CompletedOnColumn: return dateText(tnt.completionOn());
        case SeenCompleteColumn: return dateText(tnt.seenComplete());
        case CategoryColumn: return tnt.category();
        case TagsColumn: return tnt.tags();
        case ColumnCount: break;
        }
        return {};
    default: return {};
    }
}

QString TntTableModel::dateText(API::Date when) const
{
    if (m_dateTextsFresh.hasExpired() || m_dateTexts.size() >= dateTextsLimit) {
        m_dateTexts.clear();
        m_zone = QTimeZone::systemTimeZone();
        m_dateTextsFresh.setRemainingTime(std::chrono::minutes(1));
    }
    auto known = m_dateTexts.constFind(when.secondsSinceEpoch());
    if (known == m_dateTexts.cend())
        known = m_dateTexts.insert(when.secondsSinceEpoch(), TntFormat::date(when.toDateTime(), m_zone));
    return *known;
}

bool TntTableModel::lessThan(Column column, const TntModel &left, const TntModel &right)
{
    const auto by = [](const auto &a, const auto &b) { return a < b; };
    switch (column) {
    case NameColumn: return left.nameSortKey().compare(right.nameSortKey()) < 0;
    case SizeColumn: return by(left.size(), right.size());
    case ProgressColumn: return by(left.progress(), right.progress());
    case StatusColumn: return by(static_cast<int>(left.state()), static_cast<int>(right.state()));
    case DownSpeedColumn: return by(left.dlspeed(), right.dlspeed());
    case UpSpeedColumn: return by(left.upspeed(), right.upspeed());
    case SeedsColumn: return by(left.numSeeds(), right.numSeeds());
    case PeersColumn: return by(left.numLeechs(), right.numLeechs());
    case EtaColumn: return by(left.eta(), right.eta());
    case RatioColumn: return by(left.ratio(), right.ratio());
    case AddedOnColumn: return by(left.addedOn().secondsSinceEpoch(), right.addedOn().secondsSinceEpoch());
    case CompletedOnColumn:
        return by(left.completionOn().secondsSinceEpoch(), right.completionOn().secondsSinceEpoch());
    case SeenCompleteColumn:
        return by(left.seenComplete().secondsSinceEpoch(), right.seenComplete().secondsSinceEpoch());
    case CategoryColumn: return by(left.category(), right.category());
    case TagsColumn: return by(left.tags(), right.tags());
    case ColumnCount: break;
    }
    return false;
}
