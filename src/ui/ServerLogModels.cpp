#include "ui/ServerLogModels.h"

#include "model/ServerLog.h"

#include <QApplication>
#include <QLocale>
#include <QPalette>
#include <QStyle>

QString logTime(API::Date when)
{
    const QDateTime local = when.toDateTime().toLocalTime();
    if (!local.isValid())
        return {};
    const QLocale locale;
    return locale.toString(local.date(), QLocale::ShortFormat) + u' ' + local.time().toString(u"HH:mm:ss");
}

namespace {

// The desktop's own message icons, as its dialogs show them; a normal line has none.
QIcon levelIcon(API::LogLevel level)
{
    QStyle *style = QApplication::style();
    switch (level) {
    case API::LogLevel::normal: return {};
    case API::LogLevel::info:
        return QIcon::fromTheme(QStringLiteral("dialog-information"),
                                style->standardIcon(QStyle::SP_MessageBoxInformation));
    case API::LogLevel::warning:
        return QIcon::fromTheme(QStringLiteral("dialog-warning"), style->standardIcon(QStyle::SP_MessageBoxWarning));
    case API::LogLevel::critical:
        return QIcon::fromTheme(QStringLiteral("dialog-error"), style->standardIcon(QStyle::SP_MessageBoxCritical));
    }
    return {};
}

// The time in the palette's quieter text, as the message is what a line is read for.
QVariant timeForeground()
{
    return QApplication::palette().brush(QPalette::PlaceholderText);
}

} // namespace

LogMessageTableModel::LogMessageTableModel(const LogLines<API::LogMessage> &lines, QObject *parent)
    : KeyedRowsTableModel(lines, ColumnCount, parent)
    , m_lines(lines)
{
}

QString LogMessageTableModel::levelName(API::LogLevel level)
{
    switch (level) {
    case API::LogLevel::normal: return tr("Normal Messages");
    case API::LogLevel::info: return tr("Information Messages");
    case API::LogLevel::warning: return tr("Warning Messages");
    case API::LogLevel::critical: return tr("Critical Messages");
    }
    return {};
}

QVariant LogMessageTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_lines.size())
        return {};
    const API::LogMessage &line = m_lines.at(index.row());
    const bool time = index.column() == TimeColumn;
    switch (role) {
    case Qt::DisplayRole: return time ? logTime(line.timestamp) : line.message;
    case Qt::ToolTipRole: return time ? QVariant() : QVariant(line.message);
    case Qt::DecorationRole: return time ? QVariant() : QVariant(levelIcon(line.type));
    case Qt::ForegroundRole: return time ? timeForeground() : QVariant();
    case Qt::AccessibleDescriptionRole: return levelName(line.type);
    case LevelRole: return static_cast<int>(line.type);
    default: return {};
    }
}

QVariant LogMessageTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == TimeColumn ? tr("Time") : tr("Message");
}

PeerLogTableModel::PeerLogTableModel(const LogLines<API::PeerLogEntry> &lines, QObject *parent)
    : KeyedRowsTableModel(lines, ColumnCount, parent)
    , m_lines(lines)
{
}

QVariant PeerLogTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_lines.size())
        return {};
    const API::PeerLogEntry &line = m_lines.at(index.row());
    if (role == Qt::ForegroundRole && index.column() == TimeColumn)
        return timeForeground();
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case TimeColumn: return logTime(line.timestamp);
    case IpColumn: return line.ip;
    case ReasonColumn: return line.blocked ? line.reason : tr("Banned");
    default: return {};
    }
}

QVariant PeerLogTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn: return tr("Time");
    case IpColumn: return tr("IP");
    case ReasonColumn: return tr("Reason");
    default: return {};
    }
}

LogLevelFilter::LogLevelFilter(QObject *parent)
    : QSortFilterProxyModel(parent)
{
}

void LogLevelFilter::setLevels(int levels)
{
    if (levels == m_levels)
        return;
    m_levels = levels;
    invalidateRowsFilter();
}

bool LogLevelFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    return (index.data(LogMessageTableModel::LevelRole).toInt() & m_levels) != 0;
}
