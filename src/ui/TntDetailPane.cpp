#include "ui/TntDetailPane.h"

#include "core/AppContext.h"
#include "settings/UserDefaults.h"
#include "support/Detached.h"
#include "ui/AlternateRows.h"
#include "ui/ColumnState.h"
#include "ui/LinkedText.h"
#include "ui/PiecesBar.h"
#include "ui/TntCommands.h"
#include "ui/TntContentTab.h"
#include "ui/TntContentTree.h"
#include "ui/TntDetailTables.h"
#include "ui/TntHttpSources.h"
#include "ui/TntSpeedPage.h"
#include "ui/TntTableModel.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QScrollArea>
#include <QSortFilterProxyModel>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QTreeView>
#include <QVBoxLayout>

using Tab = TntDetailContext::Tab;

namespace {

constexpr Tab tabOrder[] = {Tab::general, Tab::trackers, Tab::peers, Tab::httpSources, Tab::content, Tab::speed};

// English: they name the fields in generalText(); the labels show them translated.
const QStringList transferTitles{
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Time active")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "ETA")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Connections")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Downloaded")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Uploaded")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Seeds")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Download speed")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Upload speed")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Peers")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Download limit")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Upload limit")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Wasted")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Share ratio")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Reannounce in")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Last seen complete")),
};
const QStringList informationTitles{
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Total size")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Added on")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Completed on")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Created on")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Created by")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Pieces")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Availability")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Info hash v1")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Info hash v2")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Save path")),
    QStringLiteral(QT_TRANSLATE_NOOP("TntDetailPane", "Comment")),
};

QString shownRate(qint64 rate)
{
    return rate > 0 ? TntFormat::rate(rate) : QStringLiteral("0 B/s");
}

QString limit(qint64 rate)
{
    return rate > 0 ? TntFormat::rate(rate) : QStringLiteral("∞");
}

QString date(API::Date when)
{
    const QString text = TntFormat::date(when.toDateTime());
    return text.isEmpty() ? QCoreApplication::translate("TntDetailPane", "Never") : text;
}

// The values of the General tab, in the order of the titles above; the comment as rich text.
QStringList generalValues(const API::SGenericProperties &p, double availability)
{
    const auto withTotal = [](qint64 value, qint64 total, const QString &word) {
        return QStringLiteral("%1 (%2 %3)").arg(value).arg(total).arg(word);
    };
    const auto bytes = [](qint64 all, qint64 session) {
        return QCoreApplication::translate("TntDetailPane", "%1 (%2 this session)")
            .arg(TntFormat::size(all), TntFormat::size(session));
    };
    const auto rate = [](qint64 now, qint64 average) {
        return QCoreApplication::translate("TntDetailPane", "%1 (%2 avg.)").arg(shownRate(now), shownRate(average));
    };
    QString active = TntFormat::duration(p.timeElapsed);
    if (p.seedingTime > 0)
        active +=
            QCoreApplication::translate("TntDetailPane", " (seeded for %1)").arg(TntFormat::duration(p.seedingTime));
    return {
        active,
        TntFormat::eta(p.eta),
        p.nbConnectionsLimit > 0
            ? withTotal(p.nbConnections, p.nbConnectionsLimit, QCoreApplication::translate("TntDetailPane", "max"))
            : QString::number(p.nbConnections),
        bytes(p.totalDownloaded, p.totalDownloadedSession),
        bytes(p.totalUploaded, p.totalUploadedSession),
        withTotal(p.seeds, p.seedsTotal, QCoreApplication::translate("TntDetailPane", "total")),
        rate(p.dlSpeed, p.dlSpeedAvg),
        rate(p.upSpeed, p.upSpeedAvg),
        withTotal(p.peers, p.peersTotal, QCoreApplication::translate("TntDetailPane", "total")),
        limit(p.dlLimit),
        limit(p.upLimit),
        TntFormat::size(p.totalWasted),
        TntFormat::ratio(p.shareRatio),
        TntFormat::duration(p.reannounce),
        date(p.lastSeen),
        TntFormat::size(p.totalSize),
        date(p.additionDate),
        date(p.completionDate),
        date(p.creationDate),
        p.createdBy,
        QCoreApplication::translate("TntDetailPane", "%1 x %2 (have %3)")
            .arg(p.piecesNum)
            .arg(TntFormat::size(p.pieceSize))
            .arg(p.piecesHave),
        availability < 0 ? QCoreApplication::translate("TntDetailPane", "N/A") : QString::number(availability, 'f', 3),
        p.infohashV1,
        p.infohashV2.value_or(QCoreApplication::translate("TntDetailPane", "N/A")),
        p.savePath,
        LinkedText::html(p.comment),
    };
}

// A sortable table over `model`, whose columns are kept under `key`.
QTreeView *makeTable(QAbstractItemModel *model, UserDefaults &defaults, UserDefaultsKey key, QWidget *parent)
{
    auto *proxy = new QSortFilterProxyModel(parent);
    proxy->setSourceModel(model);
    proxy->setSortRole(Qt::UserRole + 1); // both tables' SortRole
    auto *view = new QTreeView(parent);
    view->setModel(proxy);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    followAlternateRows(view, defaults);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSortingEnabled(true);
    view->sortByColumn(-1, Qt::AscendingOrder); // the server's order until a column is chosen
    view->header()->setStretchLastSection(true);
    view->header()->setSectionsMovable(true);
    keepColumnState(*view->header(), defaults, key);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    return view;
}

QGroupBox *fieldGroup(const QString &title, const QStringList &titles, int columns,
                      QList<QPair<QString, QLabel *>> &fields, QWidget *parent)
{
    auto *group = new QGroupBox(title, parent);
    auto *grid = new QGridLayout(group);
    grid->setHorizontalSpacing(12);
    for (qsizetype at = 0; at < titles.size(); ++at) {
        const int row = static_cast<int>(at / columns);
        const int column = static_cast<int>(at % columns) * 2;
        auto *name = new QLabel(QCoreApplication::translate("TntDetailPane", qUtf8Printable(titles[at])) + u':', group);
        name->setAlignment(Qt::AlignRight | Qt::AlignTop);
        auto *value = new QLabel(group);
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setWordWrap(columns == 1);
        grid->addWidget(name, row, column);
        grid->addWidget(value, row, column + 1);
        grid->setColumnStretch(column + 1, 1);
        fields.append({titles[at], value});
    }
    return group;
}

} // namespace

TntDetailPane::TntDetailPane(AppContext &context, TntCommands &commands, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_commands(commands)
    , m_pages(new QStackedWidget(this))
    , m_empty(new QLabel(m_pages))
    , m_tabs(new QTabWidget(m_pages))
    , m_httpSources(new TntHttpSources(context, commands, m_tabs))
    , m_content(new TntContentTree(context.settings().defaults(), m_tabs, TntContentModel::Mode::details))
{
    setObjectName(QStringLiteral("tntDetails"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setEnabled(false);
    m_pages->addWidget(m_empty);
    m_pages->addWidget(m_tabs);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);

    m_tabs->setDocumentMode(true);
    m_tabs->addTab(makeGeneralTab(), QCoreApplication::translate("TntDetailPane", "General"));
    m_tabs->addTab(makeTrackersTab(), QCoreApplication::translate("TntDetailPane", "Trackers"));
    m_tabs->addTab(makePeersTab(), QCoreApplication::translate("TntDetailPane", "Peers"));
    m_tabs->addTab(m_httpSources, QCoreApplication::translate("TntDetailPane", "HTTP Sources"));
    m_tabs->addTab(new TntContentTab(context, m_content, m_tabs),
                   QCoreApplication::translate("TntDetailPane", "Content"));
    m_tabs->addTab(new TntSpeedPage(context.tntDetails().rates(), context.transferRates(), m_tabs),
                   QCoreApplication::translate("TntDetailPane", "Speed"));

    TntDetailContext &details = context.tntDetails();
    UserDefaults &defaults = context.settings().defaults();
    const Tab remembered = TntDetailContext::tabNamed(defaults.stringValue(UserDefaultsKey::selectedTntDetailTab));
    m_tabs->setCurrentIndex(
        static_cast<int>(std::find(std::begin(tabOrder), std::end(tabOrder), remembered) - std::begin(tabOrder)));
    details.setTab(remembered);
    connect(m_tabs, &QTabWidget::currentChanged, this, [&details, &defaults](int index) {
        const Tab tab = tabOrder[index];
        defaults.setValue(UserDefaultsKey::selectedTntDetailTab, TntDetailContext::tabName(tab));
        details.setTab(tab);
    });

    connect(m_content->contentModel(), &TntContentModel::prioritiesEdited, this,
            [this](int priority, const QSet<int> &files) {
                const QString hash = m_context.tntDetails().hash();
                if (!hash.isEmpty())
                    detached(m_context.setFilePriority(hash, files, priority));
            });
    connect(&details, &TntDetailContext::targetChanged, this, &TntDetailPane::showTarget);
    connect(&details, &TntDetailContext::propertiesChanged, this, &TntDetailPane::showGeneral);
    connect(&details, &TntDetailContext::filesChanged, this, [this] { detached(showFiles()); });
    connect(&details, &TntDetailContext::pieceStatesChanged, this,
            [this, &details] { m_piecesBar->setStates(details.pieceStates()); });
    showTarget();
    showGeneral();
}

TntDetailPane::~TntDetailPane() = default;

QWidget *TntDetailPane::makeGeneralTab()
{
    auto *scroll = new QScrollArea(m_tabs);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto *page = new QWidget(scroll);
    auto *layout = new QVBoxLayout(page);
    auto *pieces = new QHBoxLayout;
    pieces->addWidget(new QLabel(QCoreApplication::translate("TntDetailPane", "Downloaded pieces:"), page));
    m_piecesBar = new PiecesBar(page);
    pieces->addWidget(m_piecesBar, 1);
    layout->addLayout(pieces);
    layout->addWidget(
        fieldGroup(QCoreApplication::translate("TntDetailPane", "Transfer"), transferTitles, 3, m_generalFields, page));
    layout->addWidget(fieldGroup(QCoreApplication::translate("TntDetailPane", "Information"), informationTitles, 1,
                                 m_generalFields, page));
    layout->addStretch();
    QLabel *comment = m_generalFields.last().second;
    comment->setTextFormat(Qt::RichText);
    comment->setTextInteractionFlags(Qt::TextBrowserInteraction);
    connect(comment, &QLabel::linkActivated, this, [](const QString &link) { LinkedText::open(link); });
    scroll->setWidget(page);
    return scroll;
}

QWidget *TntDetailPane::makeTrackersTab()
{
    UserDefaults &defaults = m_context.settings().defaults();
    m_trackerView = makeTable(new TntTrackerTableModel(m_context.tntDetails(), m_tabs), defaults,
                              UserDefaultsKey::tntTrackerTableConfiguration, m_tabs);
    m_trackerView->setObjectName(QStringLiteral("tntTrackers"));
    m_trackerView->header()->resizeSection(TntTrackerTableModel::UrlColumn, 320);
    connect(m_trackerView, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { trackerMenu()->popup(m_trackerView->viewport()->mapToGlobal(at)); });
    return m_trackerView;
}

QWidget *TntDetailPane::makePeersTab()
{
    TntDetailContext &details = m_context.tntDetails();
    m_peerView = makeTable(new TntPeerTableModel(details, m_tabs), m_context.settings().defaults(),
                           UserDefaultsKey::tntPeerTableConfiguration, m_tabs);
    m_peerView->setObjectName(QStringLiteral("tntPeers"));
    connect(m_peerView, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { peerMenu()->popup(m_peerView->viewport()->mapToGlobal(at)); });
    // Countries only when the server resolves them.
    const auto showCountries = [this, &details] {
        m_peerView->setColumnHidden(TntPeerTableModel::CountryColumn, !details.showFlags());
    };
    connect(&details, &TntDetailContext::showFlagsChanged, this, showCountries);
    showCountries();
    return m_peerView;
}

void TntDetailPane::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_context.tntDetails().setShown(true);
}

void TntDetailPane::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_context.tntDetails().setShown(false);
}

QString TntDetailPane::emptyText() const
{
    return m_pages->currentWidget() == m_empty ? m_empty->text() : QString();
}

void TntDetailPane::showTarget()
{
    const qsizetype selected = m_context.tntDetails().selectionCount();
    if (selected == 1) {
        m_pages->setCurrentWidget(m_tabs);
        return;
    }
    m_empty->setText(selected == 0
                         ? QCoreApplication::translate("TntDetailPane", "No torrent selected")
                         : QCoreApplication::translate("TntDetailPane", "%1 torrents selected").arg(selected));
    m_pages->setCurrentWidget(m_empty);
}

void TntDetailPane::showGeneral()
{
    const TntDetailContext &details = m_context.tntDetails();
    const auto &properties = details.properties();
    const TntModel *tnt = m_context.tntCollection().find(details.hash());
    const QStringList values =
        properties ? generalValues(properties->values(), tnt ? tnt->availability() : -1) : QStringList();
    for (qsizetype at = 0; at < m_generalFields.size(); ++at)
        m_generalFields[at].second->setText(values.value(at));
}

QString TntDetailPane::generalText() const
{
    QStringList lines;
    for (const auto &[title, value] : m_generalFields) {
        const QString text = value->textFormat() == Qt::RichText
                                 ? QTextDocumentFragment::fromHtml(value->text()).toPlainText()
                                 : value->text();
        if (!text.isEmpty())
            lines << title + QStringLiteral(": ") + text;
    }
    return lines.join(u'\n');
}

QCoro::Task<> TntDetailPane::showFiles()
{
    const quint64 build = ++m_filesBuild;
    const QList<API::File> files = m_context.tntDetails().files();
    if (files.isEmpty()) {
        m_content->setNodes({});
        co_return;
    }
    const QPointer<TntDetailPane> self(this);
    QCoro::Task<FileTreeBuilder::Nodes> building = m_builder.build(files);
    FileTreeBuilder::Nodes nodes = co_await std::move(building);
    if (!self || m_filesBuild != build)
        co_return;
    m_content->refreshNodes(std::move(nodes));
}

QStringList TntDetailPane::selectedTrackerUrls() const
{
    QStringList urls;
    for (const QModelIndex &row : m_trackerView->selectionModel()->selectedRows()) {
        const QString url = row.siblingAtColumn(TntTrackerTableModel::UrlColumn).data().toString();
        if (TntTrackerTableModel::isTracker(url))
            urls << url;
    }
    return urls;
}

QSet<QString> TntDetailPane::selectedPeerAddresses() const
{
    QSet<QString> addresses;
    for (const QModelIndex &row : m_peerView->selectionModel()->selectedRows())
        addresses.insert(row.data(TntPeerTableModel::AddressRole).toString());
    return addresses;
}

QMenu *TntDetailPane::trackerMenu()
{
    const QString hash = m_context.tntDetails().hash();
    const QStringList urls = selectedTrackerUrls();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QCoreApplication::translate("TntDetailPane", "Add trackers..."), this,
                    [this, hash] { m_commands.addTrackers(hash); })
        ->setEnabled(!hash.isEmpty());
    QAction *edit = menu->addAction(QCoreApplication::translate("TntDetailPane", "Edit tracker URL..."), this,
                                    [this, hash, urls] { m_commands.editTracker(hash, urls.value(0)); });
    edit->setEnabled(urls.size() == 1);
    QAction *copy = menu->addAction(QCoreApplication::translate("TntDetailPane", "Copy tracker URL"), this,
                                    [urls] { QGuiApplication::clipboard()->setText(urls.join(u'\n')); });
    copy->setEnabled(!urls.isEmpty());
    QAction *remove = menu->addAction(urls.size() > 1 ? QCoreApplication::translate("TntDetailPane", "Remove trackers")
                                                      : QCoreApplication::translate("TntDetailPane", "Remove tracker"),
                                      this, [this, hash, urls] { detached(m_context.removeTrackers(hash, urls)); });
    remove->setEnabled(!urls.isEmpty());
    return menu;
}

QMenu *TntDetailPane::peerMenu()
{
    const QString hash = m_context.tntDetails().hash();
    const QSet<QString> addresses = selectedPeerAddresses();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QCoreApplication::translate("TntDetailPane", "Add peers..."), this,
                    [this, hash] { m_commands.addPeers({hash}); })
        ->setEnabled(!hash.isEmpty());
    QAction *copy = menu->addAction(QCoreApplication::translate("TntDetailPane", "Copy IP:port"), this, [addresses] {
        QStringList sorted = addresses.values();
        sorted.sort();
        QGuiApplication::clipboard()->setText(sorted.join(u'\n'));
    });
    copy->setEnabled(!addresses.isEmpty());
    QAction *ban = menu->addAction(QCoreApplication::translate("TntDetailPane", "Ban peer permanently"), this,
                                   [this, addresses] { m_commands.banPeers(addresses); });
    ban->setEnabled(!addresses.isEmpty());
    return menu;
}
