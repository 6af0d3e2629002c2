#include "core/SnapshotKeeper.h"

#include "core/Sync.h"
#include "model/TntSnapshot.h"
#include "settings/AppSettings.h"
#include "support/Detached.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcSnapshots, "Snapshots")

namespace {

constexpr QFileDevice::Permissions userOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QCoro::Task<> show(Sync &sync, QString path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        co_return;
    QCoro::Task<bool> showing = sync.showSnapshot(file.readAll());
    file.close();
    if (!co_await std::move(showing)) {
        qCWarning(lcSnapshots, "Removed a snapshot that does not decode: %s", qUtf8Printable(path));
        QFile::remove(path);
    }
}

} // namespace

SnapshotKeeper::SnapshotKeeper(AppSettings &settings, Sync &sync, const TntCollection &tnts,
                               const ServerLabels &labels, const TrackerIndex &trackers, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_sync(sync)
    , m_tnts(tnts)
    , m_labels(labels)
    , m_trackers(trackers)
    , m_directory(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/snapshots"))
{
    m_timer.setInterval(keepingPeriod);
    connect(&m_timer, &QTimer::timeout, this, &SnapshotKeeper::keep);
    connect(&m_sync, &Sync::aboutToForget, this, &SnapshotKeeper::keep);
    connect(&m_sync, &Sync::currentChanged, this, [this] {
        if (m_sync.isCurrent())
            m_timer.start();
        else
            m_timer.stop();
    });
    connect(&m_settings, &AppSettings::changed, this, [this](UserDefaultsKey key) {
        if (key == UserDefaultsKey::rememberTntLists && !m_settings.rememberTntLists())
            forgetAll();
    });
}

SnapshotKeeper::~SnapshotKeeper() = default;

QString SnapshotKeeper::pathOf(QUuid connection) const
{
    return m_directory + u'/' + connection.toString(QUuid::WithoutBraces) + QStringLiteral(".snapshot");
}

void SnapshotKeeper::follow(std::optional<QUuid> connection)
{
    m_followed = connection;
    if (connection && m_settings.rememberTntLists())
        detached(show(m_sync, pathOf(*connection)));
}

void SnapshotKeeper::keep()
{
    if (!m_followed || !m_sync.isCurrent() || !m_settings.rememberTntLists())
        return;
    if (!QDir().mkpath(m_directory)) {
        qCWarning(lcSnapshots, "Cannot make %s", qUtf8Printable(m_directory));
        return;
    }
    QFile::setPermissions(m_directory, userOnly | QFileDevice::ExeOwner);
    QSaveFile file(pathOf(*m_followed));
    // The permissions go on the file written before anything is in it.
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(userOnly) ||
        file.write(TntSnapshot::encode(m_tnts, m_labels, m_trackers)) < 0 || !file.commit())
        qCWarning(lcSnapshots, "Cannot write %s: %s", qUtf8Printable(file.fileName()), qUtf8Printable(file.errorString()));
}

void SnapshotKeeper::retain(const QList<QUuid> &connections)
{
    const QDir directory(m_directory);
    for (const QString &name : directory.entryList({QStringLiteral("*.snapshot")}, QDir::Files)) {
        if (!connections.contains(QUuid::fromString(QStringView(name).chopped(9))))
            QFile::remove(directory.filePath(name));
    }
}

void SnapshotKeeper::forgetAll()
{
    QDir(m_directory).removeRecursively();
}
