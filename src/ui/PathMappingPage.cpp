#include "ui/PathMappingPage.h"

#include "settings/AppSettings.h"
#include "ui/EditorSheet.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString localFolder(const PathMap &map)
{
    return map.bookmarkData ? QString::fromUtf8(*map.bookmarkData) : QString();
}

} // namespace

PathMappingPage::PathMappingPage(AppSettings &settings, QWidget *parent)
    : SettingsPage(parent)
    , m_settings(settings)
    , m_maps(settings.pathMapping())
    , m_list(new QTreeWidget(this))
    , m_add(new QPushButton(QCoreApplication::translate("PathMappingPage", "Add Path Mapping"), this))
    , m_remove(new QPushButton(QCoreApplication::translate("PathMappingPage", "Remove Path Mapping"), this))
{
    auto *layout = new QVBoxLayout(this);
    auto *header = new QLabel(
        QCoreApplication::translate("PathMappingPage", "Map server paths to local folders on your computer"), this);
    header->setStyleSheet(QStringLiteral("font-weight: bold"));
    layout->addWidget(header);
    m_list->setHeaderLabels({QCoreApplication::translate("PathMappingPage", "Remote Path"),
                             QCoreApplication::translate("PathMappingPage", "Local Path")});
    m_list->setRootIsDecorated(false);
    m_list->header()->setStretchLastSection(true);
    m_list->setColumnWidth(0, 260);
    layout->addWidget(m_list, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    const QStringList help{
        QCoreApplication::translate(
            "PathMappingPage", "Path mapping lets Quillo locate torrent files on your computer when qBittorrent sees a "
                               "different file system, for example when it runs on a remote server or inside a Docker "
                               "container."),
        QCoreApplication::translate(
            "PathMappingPage",
            "Remote Path is the path as qBittorrent reports it, such as the default save path or a "
            "torrent's save path. Local Path is the folder on your computer where those files actually "
            "live, e.g. a mounted network share."),
        QCoreApplication::translate(
            "PathMappingPage",
            "Add an entry for each remote path prefix you want translated. \"Show in File Manager\" uses "
            "this mapping to reveal a torrent's downloaded files."),
        QCoreApplication::translate(
            "PathMappingPage", "Open torrent contents in File Manager by double-clicking or using the shortcut menu."),
    };
    for (const QString &paragraph : help) {
        auto *label = new QLabel(paragraph, this);
        label->setWordWrap(true);
        layout->addWidget(label);
    }

    connect(m_add, &QPushButton::clicked, this, [this] { edit(); });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
        if (row < 0)
            return;
        m_maps.removeAt(row);
        showList();
        Q_EMIT edited();
    });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem *item) { edit(m_list->indexOfTopLevelItem(item)); });
    connect(m_list, &QTreeWidget::currentItemChanged, this,
            [this] { m_remove->setEnabled(m_list->currentItem() != nullptr); });
    showList();
}

bool PathMappingPage::hasChanges() const
{
    const QList<PathMap> &stored = m_settings.pathMapping();
    return !std::equal(m_maps.cbegin(), m_maps.cend(), stored.cbegin(), stored.cend(),
                       [](const PathMap &a, const PathMap &b) {
                           return a.remotePath == b.remotePath && a.bookmarkData == b.bookmarkData;
                       });
}

void PathMappingPage::apply()
{
    m_settings.setPathMapping(m_maps);
    m_maps = m_settings.pathMapping();
    showList();
}

EditorSheet *PathMappingPage::edit(int row, const QString &remotePath)
{
    const bool adding = row < 0 || row >= m_maps.size();
    const PathMap current = adding ? PathMap{.remotePath = remotePath} : m_maps.at(row);
    auto *sheet = new EditorSheet(adding ? QCoreApplication::translate("PathMappingPage", "Add Path Mapping")
                                         : QCoreApplication::translate("PathMappingPage", "Edit Path Mapping"),
                                  adding ? QCoreApplication::translate("PathMappingPage", "Add")
                                         : QCoreApplication::translate("PathMappingPage", "Save"),
                                  this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    QLineEdit *remote = sheet->addLine(QCoreApplication::translate("PathMappingPage", "Remote Path"),
                                       QStringLiteral("/opt/etc/downloads/"), current.remotePath);
    QLineEdit *local = sheet->addFolderLine(
        QCoreApplication::translate("PathMappingPage", "Local Path"), QString(), localFolder(current),
        QCoreApplication::translate("PathMappingPage", "Select..."),
        QCoreApplication::translate("PathMappingPage",
                                    "Select the local folder that corresponds to your remote downloads"));
    connect(sheet, &QDialog::accepted, this, [this, row, adding, current, remote, local] {
        PathMap map = current;
        map.remotePath = remote->text().trimmed();
        map.bookmarkData = local->text().trimmed().toUtf8();
        if (adding)
            m_maps.append(map);
        else if (row < m_maps.size())
            m_maps[row] = map;
        showList();
        Q_EMIT edited();
    });
    sheet->open();
    return sheet;
}

void PathMappingPage::showList()
{
    m_list->clear();
    for (const PathMap &map : m_maps)
        m_list->addTopLevelItem(new QTreeWidgetItem({map.remotePath, localFolder(map)}));
    m_remove->setEnabled(m_list->currentItem() != nullptr);
}
