#include "ui/SearchResultsModel.h"

#include "model/SearchJob.h"
#include "ui/TntTableModel.h"

#include <QUrl>

namespace {

QString count(qint64 value)
{
    return value < 0 ? QString() : QString::number(value);
}

// 4.x names no engine; its site's host says which one it was.
QString engineOf(const API::SearchResult &result)
{
    if (result.engineName && !result.engineName->isEmpty())
        return *result.engineName;
    const QString host = QUrl(result.siteUrl).host();
    return host.isEmpty() ? result.siteUrl : host;
}

} // namespace

SearchResultsModel::SearchResultsModel(const SearchJob &job, QObject *parent)
    : KeyedRowsTableModel(job, ColumnCount, parent)
    , m_job(job)
{}

QVariant SearchResultsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_job.size())
        return {};
    const API::SearchResult &result = m_job.at(index.row());
    const auto column = static_cast<Column>(index.column());
    if (role == SortRole) {
        switch (column) {
        case NameColumn: return result.fileName;
        case SizeColumn: return result.fileSize;
        case SeedersColumn: return result.nbSeeders;
        case LeechersColumn: return result.nbLeechers;
        case EngineColumn: return engineOf(result);
        case PublishedColumn: return result.pubDate ? result.pubDate->secondsSinceEpoch() : 0.0;
        case ColumnCount: break;
        }
        return {};
    }
    if (role == Qt::TextAlignmentRole && (column == SizeColumn || column == SeedersColumn || column == LeechersColumn))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && column == NameColumn)
        return result.fileName;
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case NameColumn: return result.fileName;
    case SizeColumn: return result.fileSize < 0 ? QString() : TntFormat::size(result.fileSize);
    case SeedersColumn: return count(result.nbSeeders);
    case LeechersColumn: return count(result.nbLeechers);
    case EngineColumn: return engineOf(result);
    case PublishedColumn:
        // Plugins that know no date send 0, which shows empty.
        return result.pubDate ? TntFormat::date(result.pubDate->toDateTime()) : QString();
    case ColumnCount: break;
    }
    return {};
}

QVariant SearchResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (static_cast<Column>(section)) {
    case NameColumn: return tr("Name");
    case SizeColumn: return tr("Size");
    case SeedersColumn: return tr("Seeders");
    case LeechersColumn: return tr("Leechers");
    case EngineColumn: return tr("Search engine");
    case PublishedColumn: return tr("Published");
    case ColumnCount: break;
    }
    return {};
}
