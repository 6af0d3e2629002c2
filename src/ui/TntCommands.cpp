#include "ui/TntCommands.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/EditorSheet.h"
#include "ui/ShareLimitField.h"
#include "ui/SearchWindow.h"
#include "ui/ServerLogWindow.h"
#include "ui/StatisticsWindow.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

TntCommands::TntCommands(AppContext &context, QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_window(window)
{}

QString TntCommands::removeTitle(qsizetype count)
{
    if (count == 0)
        return QCoreApplication::translate("TntCommands", "Are you sure you want to remove All torrents?");
    if (count == 1)
        return QCoreApplication::translate("TntCommands", "Are you sure you want to remove 1 torrent?");
    return QCoreApplication::translate("TntCommands", "Are you sure you want to remove %1 torrents?").arg(count);
}

QString TntCommands::removeMessage(qsizetype count)
{
    return count == 1
               ? QCoreApplication::translate("TntCommands",
                                             "This torrent will be deleted immediately. You can’t undo this action.")
               : QCoreApplication::translate("TntCommands",
                                             "These torrents will be deleted immediately. You can’t undo this action.");
}

void TntCommands::present(QDialog *sheet)
{
    if (m_sheet)
        m_sheet->close();
    m_sheet = sheet;
    sheet->open();
    Q_EMIT sheetOpened(sheet);
}

void TntCommands::start(const QSet<QString> &hashes)
{
    detached(m_context.startTnts(hashes));
}

void TntCommands::stop(const QSet<QString> &hashes)
{
    detached(m_context.stopTnts(hashes));
}

void TntCommands::remove(const QSet<QString> &hashes, Removal removal)
{
    // Every torrent of the server is always asked about, whatever the setting says.
    const bool everyTorrent = hashes.isEmpty();
    const bool withFiles = removal == Removal::withFiles;
    if (!everyTorrent && !withFiles &&
        !m_context.settings().defaults().boolValue(UserDefaultsKey::confirmTntDeleting, true)) {
        detached(m_context.removeTnts(hashes, false));
        return;
    }
    auto *alert = new QMessageBox(QMessageBox::Warning, removeTitle(hashes.size()), removeTitle(hashes.size()),
                                  QMessageBox::NoButton, m_window);
    alert->setObjectName(QStringLiteral("removeConfirmation"));
    alert->setInformativeText(removeMessage(hashes.size()));
    alert->setWindowModality(Qt::WindowModal);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *fromList =
        alert->addButton(QCoreApplication::translate("TntCommands", "Remove from List"), QMessageBox::AcceptRole);
    QPushButton *everywhere =
        alert->addButton(QCoreApplication::translate("TntCommands", "Remove Everywhere"), QMessageBox::DestructiveRole);
    QPushButton *cancel =
        alert->addButton(QCoreApplication::translate("TntCommands", "Cancel"), QMessageBox::RejectRole);
    // Return must never remove every torrent.
    alert->setDefaultButton(everyTorrent ? cancel : withFiles ? everywhere : fromList);
    connect(alert, &QMessageBox::finished, this, [this, alert, fromList, everywhere, hashes] {
        if (alert->clickedButton() == fromList || alert->clickedButton() == everywhere)
            detached(m_context.removeTnts(hashes, alert->clickedButton() == everywhere));
    });
    present(alert);
}

void TntCommands::editLocation(const QSet<QString> &hashes)
{
    auto *sheet = new EditorSheet(QCoreApplication::translate("TntCommands", "New torrent location"),
                                  QCoreApplication::translate("TntCommands", "Save"), m_window);
    sheet->setObjectName(QStringLiteral("locationEditor"));
    // One torrent, or several in one folder: start from where they are.
    QString current;
    for (const QString &hash : hashes) {
        const TntModel *tnt = m_context.tntCollection().find(hash);
        if (!tnt || (!current.isEmpty() && tnt->savePath() != current)) {
            current.clear();
            break;
        }
        current = tnt->savePath();
    }
    QLineEdit *location = sheet->addFolderLine(QCoreApplication::translate("TntCommands", "Location"),
                                               QStringLiteral("/opt/etc/downloads/"), current);
    connect(sheet, &QDialog::accepted, this,
            [this, hashes, location] { detached(m_context.setLocation(hashes, location->text().trimmed())); });
    present(sheet);
}

void TntCommands::rename(const QString &hash)
{
    const TntModel *tnt = m_context.tntCollection().find(hash);
    auto *sheet = new EditorSheet(QString(), QCoreApplication::translate("TntCommands", "Rename"), m_window);
    sheet->setObjectName(QStringLiteral("nameEditor"));
    QLineEdit *name =
        sheet->addLine(QCoreApplication::translate("TntCommands", "Name"),
                       QCoreApplication::translate("TntCommands", "New name"), tnt ? tnt->name() : QString());
    name->selectAll();
    connect(sheet, &QDialog::accepted, this,
            [this, hash, name] { detached(m_context.renameTnt(hash, name->text().trimmed())); });
    present(sheet);
}

void TntCommands::addPeers(const QSet<QString> &hashes)
{
    auto *sheet = new EditorSheet(QString(), QCoreApplication::translate("TntCommands", "Add"), m_window);
    sheet->setObjectName(QStringLiteral("peersEditor"));
    QPlainTextEdit *peers =
        sheet->addLines(QCoreApplication::translate("TntCommands", "List of peers to add (one Peer per line)"),
                        QCoreApplication::translate("TntCommands", "Format: IPv4:port / [IPv6]:port"));
    connect(sheet, &QDialog::accepted, this, [this, hashes, peers] {
        detached(m_context.addPeers(hashes, EditorSheet::entries(peers->toPlainText())));
    });
    present(sheet);
}

void TntCommands::addTrackers(const QString &hash)
{
    addUrls(QStringLiteral("trackersEditor"),
            QCoreApplication::translate("TntCommands", "List of trackers to add (one per line)"),
            [this, hash](const QStringList &urls) { detached(m_context.addTrackers(hash, urls)); });
}

void TntCommands::editTracker(const QString &hash, const QString &url)
{
    editUrl(QCoreApplication::translate("TntCommands", "Edit tracker URL"), QStringLiteral("trackerEditor"),
            QStringLiteral("udp://tracker.example:1337/announce"), url,
            [this, hash, url](const QString &edited) { detached(m_context.editTracker(hash, url, edited)); });
}

void TntCommands::addWebSeeds(const QString &hash)
{
    addUrls(QStringLiteral("webSeedsEditor"),
            QCoreApplication::translate("TntCommands", "List of web seeds to add (one per line)"),
            [this, hash](const QStringList &urls) { detached(m_context.detailEdits().addWebSeeds(hash, urls)); });
}

void TntCommands::editWebSeed(const QString &hash, const QString &url)
{
    editUrl(QCoreApplication::translate("TntCommands", "Edit web seed URL"), QStringLiteral("webSeedEditor"),
            QStringLiteral("https://seed.example/files/"), url, [this, hash, url](const QString &edited) {
                detached(m_context.detailEdits().editWebSeed(hash, url, edited));
            });
}

void TntCommands::addUrls(const QString &name, const QString &prompt, const std::function<void(QStringList)> &add)
{
    auto *sheet = new EditorSheet(QString(), QCoreApplication::translate("TntCommands", "Add"), m_window);
    sheet->setObjectName(name);
    QPlainTextEdit *urls = sheet->addLines(prompt, QString());
    connect(sheet, &QDialog::accepted, this, [urls, add] { add(EditorSheet::entries(urls->toPlainText())); });
    present(sheet);
}

void TntCommands::editUrl(const QString &title, const QString &name, const QString &placeholder, const QString &url,
                          const std::function<void(QString)> &save)
{
    auto *sheet = new EditorSheet(title, QCoreApplication::translate("TntCommands", "Save"), m_window);
    sheet->setObjectName(name);
    QLineEdit *field = sheet->addLine(QCoreApplication::translate("TntCommands", "URL"), placeholder, url);
    connect(sheet, &QDialog::accepted, this, [url, field, save] {
        const QString edited = field->text().trimmed();
        if (edited != url)
            save(edited);
    });
    present(sheet);
}

void TntCommands::banPeers(const QSet<QString> &addresses)
{
    if (addresses.isEmpty())
        return;
    const QString title =
        addresses.size() == 1
            ? QCoreApplication::translate("TntCommands", "Are you sure you want to permanently ban the selected peer?")
            : QCoreApplication::translate("TntCommands",
                                          "Are you sure you want to permanently ban the selected peers?");
    auto *alert = new QMessageBox(QMessageBox::Warning, title, title, QMessageBox::NoButton, m_window);
    alert->setObjectName(QStringLiteral("banConfirmation"));
    QStringList listed = addresses.values();
    listed.sort();
    alert->setInformativeText(listed.join(u'\n'));
    alert->setWindowModality(Qt::WindowModal);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *ban =
        alert->addButton(QCoreApplication::translate("TntCommands", "Ban"), QMessageBox::DestructiveRole);
    alert->setDefaultButton(
        alert->addButton(QCoreApplication::translate("TntCommands", "Cancel"), QMessageBox::RejectRole));
    connect(alert, &QMessageBox::finished, this, [this, alert, ban, addresses] {
        if (alert->clickedButton() == ban)
            detached(m_context.banPeers(addresses));
    });
    present(alert);
}

namespace {

QCoro::Task<> fillLimit(QPointer<QSpinBox> field, QCoro::Task<std::optional<qint64>> reading)
{
    const std::optional<qint64> limit = co_await std::move(reading);
    if (!field)
        co_return;
    // Rounded up: a limit below 1 KiB/s must not read as "Unlimited".
    field->setValue(static_cast<int>(std::min<qint64>((limit.value_or(0) + 1023) / 1024, field->maximum())));
    field->setEnabled(true);
}

} // namespace

void TntCommands::editLimit(const QString &title, QCoro::Task<std::optional<qint64>> reading,
                            std::function<void(qint64)> save)
{
    auto *sheet = new EditorSheet(title, QCoreApplication::translate("TntCommands", "Save"), m_window);
    sheet->setObjectName(QStringLiteral("limitEditor"));
    QSpinBox *field = sheet->addRate(QCoreApplication::translate("TntCommands", "Limit"));
    field->setEnabled(false); // until the server says what it is
    connect(sheet, &QDialog::accepted, this, [field, save = std::move(save)] { save(qint64(field->value()) * 1024); });
    present(sheet);
    detached(fillLimit(field, std::move(reading)));
}

void TntCommands::limitRate(const QSet<QString> &hashes, TransferLimits::Direction direction)
{
    if (hashes.isEmpty())
        return;
    const bool down = direction == TransferLimits::Direction::down;
    TransferLimits &limits = m_context.limits();
    editLimit(down ? QCoreApplication::translate("TntCommands", "Torrent Download Speed Limiting")
                   : QCoreApplication::translate("TntCommands", "Torrent Upload Speed Limiting"),
              limits.tntLimit(hashes.values(), direction), [&limits, hashes, direction](qint64 limit) {
                  detached(limits.setTntLimit(TntTargets::only(hashes), direction, limit));
              });
}

void TntCommands::limitGlobalRate(TransferLimits::Direction direction)
{
    const bool down = direction == TransferLimits::Direction::down;
    TransferLimits &limits = m_context.limits();
    editLimit(down ? QCoreApplication::translate("TntCommands", "Global Download Speed Limit")
                   : QCoreApplication::translate("TntCommands", "Global Upload Speed Limit"),
              limits.globalLimit(direction),
              [&limits, direction](qint64 limit) { detached(limits.setGlobalLimit(direction, limit)); });
}

void TntCommands::limitShare(const QSet<QString> &hashes)
{
    if (hashes.isEmpty())
        return;
    auto *sheet = new EditorSheet(QCoreApplication::translate("TntCommands", "Share Limits"),
                                  QCoreApplication::translate("TntCommands", "Save"), m_window);
    sheet->setObjectName(QStringLiteral("shareLimitEditor"));
    const QString global = QCoreApplication::translate("TntCommands", "Use global limit");
    auto *ratio = new ShareLimitField(ShareLimitField::Kind::ratio, QStringLiteral("ratio"), global, sheet);
    auto *seeding = new ShareLimitField(ShareLimitField::Kind::minutes, QStringLiteral("seedingTime"), global, sheet);
    auto *inactive =
        new ShareLimitField(ShareLimitField::Kind::minutes, QStringLiteral("inactiveSeedingTime"), global, sheet);
    sheet->addRow(QCoreApplication::translate("TntCommands", "Ratio"), ratio);
    sheet->addRow(QCoreApplication::translate("TntCommands", "Seeding time"), seeding);
    if (m_context.serverFeatures().limitsInactiveSeedingTime())
        sheet->addRow(QCoreApplication::translate("TntCommands", "Inactive seeding time"), inactive);
    else
        inactive->hide();
    // What every one of them has; the server's own setting where they differ.
    const auto shared = [this, &hashes](double (*field)(const TntModel &)) {
        std::optional<double> value;
        for (const QString &hash : hashes) {
            const TntModel *tnt = m_context.tntCollection().find(hash);
            if (!tnt || (value && *value != field(*tnt)))
                return -2.0;
            value = field(*tnt);
        }
        return value.value_or(-2.0);
    };
    ratio->setWireValue(shared([](const TntModel &tnt) { return tnt.ratioLimit(); }));
    seeding->setWireValue(shared([](const TntModel &tnt) { return double(tnt.seedingTimeLimit()); }));
    inactive->setWireValue(shared([](const TntModel &tnt) { return double(tnt.inactiveSeedingTimeLimit()); }));
    connect(sheet, &QDialog::accepted, this, [this, hashes, ratio, seeding, inactive] {
        detached(m_context.limits().setShareLimits(TntTargets::only(hashes), ratio->wireValue(),
                                                   qint64(seeding->wireValue()), qint64(inactive->wireValue())));
    });
    present(sheet);
}

QDialog *TntCommands::showStatistics()
{
    if (!m_statistics)
        m_statistics = new StatisticsWindow(m_context.serverState(), m_window);
    m_statistics->show();
    m_statistics->raise();
    return m_statistics;
}

QWidget *TntCommands::showServerLog()
{
    if (!m_serverLog)
        m_serverLog = new ServerLogWindow(m_context, m_window);
    m_serverLog->show();
    m_serverLog->raise();
    m_serverLog->activateWindow();
    return m_serverLog;
}

QWidget *TntCommands::showSearch(TntAddingFlow &adding)
{
    if (!m_search)
        m_search = new SearchWindow(m_context, adding, m_window);
    m_search->show();
    m_search->raise();
    m_search->activateWindow();
    return m_search;
}

void TntCommands::shutDownServer()
{
    const QString name = m_context.clientConfiguration() ? m_context.clientConfiguration()->name : QString();
    const QString title = QCoreApplication::translate("TntCommands", "Shut down \"%1\"?").arg(name);
    auto *alert = new QMessageBox(QMessageBox::Warning, title, title, QMessageBox::NoButton, m_window);
    alert->setObjectName(QStringLiteral("shutDownConfirmation"));
    alert->setInformativeText(QCoreApplication::translate(
        "TntCommands", "qBittorrent will quit on the server, and its torrents stop until it is "
                       "started there again."));
    alert->setWindowModality(Qt::WindowModal);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *shutDown =
        alert->addButton(QCoreApplication::translate("TntCommands", "Shut Down"), QMessageBox::DestructiveRole);
    alert->setDefaultButton(
        alert->addButton(QCoreApplication::translate("TntCommands", "Cancel"), QMessageBox::RejectRole));
    connect(alert, &QMessageBox::finished, this, [this, alert, shutDown] {
        if (alert->clickedButton() == shutDown)
            detached(m_context.shutDownServer());
    });
    present(alert);
}

void TntCommands::createCategory()
{
    auto *sheet = new EditorSheet(QCoreApplication::translate("TntCommands", "New category"),
                                  QCoreApplication::translate("TntCommands", "Create"), m_window);
    sheet->setObjectName(QStringLiteral("categoryEditor"));
    QLineEdit *name = sheet->addLine(QCoreApplication::translate("TntCommands", "Name"),
                                     QCoreApplication::translate("TntCommands", "Category"));
    QLineEdit *savePath = sheet->addLine(QCoreApplication::translate("TntCommands", "Save path"),
                                         QStringLiteral("/opt/etc/downloads/"), {}, false);
    connect(sheet, &QDialog::accepted, this, [this, name, savePath] {
        detached(m_context.createCategory(name->text().trimmed(), savePath->text().trimmed()));
    });
    present(sheet);
}

void TntCommands::editCategory(const QString &name, const QString &savePath)
{
    auto *sheet = new EditorSheet(QCoreApplication::translate("TntCommands", "Edit category"),
                                  QCoreApplication::translate("TntCommands", "Save"), m_window);
    sheet->setObjectName(QStringLiteral("categoryEditor"));
    // The server finds the category by its name, so the name is not editable here.
    sheet->addLine(QCoreApplication::translate("TntCommands", "Name"), QString(), name)->setReadOnly(true);
    QLineEdit *path = sheet->addLine(QCoreApplication::translate("TntCommands", "Save path"),
                                     QStringLiteral("/opt/etc/downloads/"), savePath, false);
    // Servers up to 5.1 answer 409 to an edit that changes nothing.
    connect(sheet, &QDialog::accepted, this, [this, name, savePath, path] {
        if (const QString edited = path->text().trimmed(); edited != savePath)
            detached(m_context.editCategory(name, edited));
    });
    present(sheet);
}

namespace {

EditorSheet *tagEditor(QWidget *window, QLineEdit *&field)
{
    auto *sheet = new EditorSheet(QCoreApplication::translate("TntCommands", "New tags"),
                                  QCoreApplication::translate("TntCommands", "Add"), window);
    sheet->setObjectName(QStringLiteral("tagEditor"));
    field = sheet->addLine(QString(), QStringLiteral("tag1 tag2 tag3 ..."));
    sheet->addHint(QCoreApplication::translate("TntCommands", "Tags separated by space"));
    return sheet;
}

} // namespace

void TntCommands::addTags(const QSet<QString> &hashes)
{
    QLineEdit *field = nullptr;
    EditorSheet *sheet = tagEditor(m_window, field);
    connect(sheet, &QDialog::accepted, this,
            [this, hashes, field] { detached(m_context.addTags(hashes, EditorSheet::words(field->text()))); });
    present(sheet);
}

void TntCommands::createTags()
{
    QLineEdit *field = nullptr;
    EditorSheet *sheet = tagEditor(m_window, field);
    connect(sheet, &QDialog::accepted, this,
            [this, field] { detached(m_context.createTags(EditorSheet::words(field->text()))); });
    present(sheet);
}
