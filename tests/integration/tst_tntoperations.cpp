#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "support/Await.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"
#include "support/Widgets.h"
#include "ui/EditorSheet.h"
#include "ui/MainWindow.h"
#include "ui/TntActions.h"
#include "ui/TntCommands.h"
#include "ui/TntContextMenu.h"
#include "ui/TransferStatus.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;
using State = TntModel::State;

namespace {

const auto item = QuilloTest::menuItem;

void click(const QWidget &dialog, const QString &text)
{
    for (QAbstractButton *button : dialog.findChildren<QAbstractButton *>()) {
        if (button->text() == text) {
            button->click();
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no button ") + text));
}

} // namespace

// The window's torrent commands against real servers: 4.5 resumes and pauses, 5.1 starts and
// stops. Each command must change the real torrent; the table shows the expected state at once and
// the server's own after the next poll.
class TestTntOperations : public QObject
{
    Q_OBJECT

public:
    explicit TestTntOperations(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    QTemporaryDir m_dir;
    KeychainStore m_keychain;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;
    std::unique_ptr<MainWindow> m_window;
    QbtServer::DataDir m_data;

    bool modern() const { return m_flavor != Flavor::Bookworm45; }
    TntCommands &commands() { return *m_window->tntCommands(); }
    TntActions &actions() { return *m_window->tntActions(); }

    const TntModel *tnt(const QString &hash) const { return m_context->tntCollection().find(hash); }

    QString alert() const
    {
        const auto &error = m_context->clientError();
        return error ? error->title() + u'|' + error->failureReason() : QString();
    }

    // A seeded torrent the server has checked and holds complete.
    TorrentFactory::Torrent addSeeded(const QString &name)
    {
        const auto made = TorrentFactory::singleFile(m_data.localPath, name, 48'000);
        wait(m_context->client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", m_data.serverPath.toUtf8()}}))));
        [&] { QTRY_VERIFY_WITH_TIMEOUT(tnt(made.infoHash) && tnt(made.infoHash)->progress() == 1.0, 20'000); }();
        return made;
    }

    // Operations must not depend on a sheet's layout: they fill the first editable line.
    void fillSheet(const QString &text, const QString &action)
    {
        auto *sheet = qobject_cast<EditorSheet *>(commands().openSheet());
        QVERIFY(sheet);
        for (QLineEdit *line : sheet->findChildren<QLineEdit *>()) {
            if (!line->isReadOnly()) {
                line->setText(text);
                break;
            }
        }
        QCOMPARE(sheet->actionButton()->text(), action);
        sheet->actionButton()->click();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor, {.localHostAuth = false});
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        m_data = m_server->makeDataDir();
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        ClientConfiguration configuration = m_server->configuration();
        configuration.authMethod = API::AuthMethod::none;
        m_context->addConfiguration(configuration);
        wait(m_context->selectConfiguration(configuration.id));
        QVERIFY(m_context->isAuthorized());
    }

    void cleanupTestCase()
    {
        m_window.reset();
        m_context.reset();
        m_server.reset();
    }

    void init() { m_context->dismissClientError(); }

    void stopAndStartFromTheToolbar()
    {
        const auto made = addSeeded(QStringLiteral("toolbar.bin"));
        m_context->setSelectedTnts({made.infoHash});
        m_window->toolbarAction(QStringLiteral("stop_tnt"))->trigger();
        const State stopped = modern() ? State::stoppedUP : State::pausedUP;
        QTRY_COMPARE(tnt(made.infoHash)->state(), stopped); // at once, before any poll
        m_context->forcePoll();
        QTest::qWait(1500);
        QCOMPARE(tnt(made.infoHash)->state(), stopped); // and the server agrees

        m_window->toolbarAction(QStringLiteral("start_tnt"))->trigger();
        QTRY_COMPARE(tnt(made.infoHash)->state(), State::stalledUP);
        QTRY_VERIFY_WITH_TIMEOUT(TntModel::matches(tnt(made.infoHash)->state(), State::uploading) ||
                                     tnt(made.infoHash)->state() == State::stalledUP,
                                 10'000);
        QCOMPARE(alert(), QString());
    }

    void contextMenuCommands()
    {
        const auto made = addSeeded(QStringLiteral("menu.bin"));
        const QSet<QString> hashes{made.infoHash};
        wait(m_context->createCategory(QStringLiteral("Linux & BSD"), QString()));
        wait(m_context->createTags({QStringLiteral("keep")}));
        auto menu = std::make_unique<TntContextMenu>(actions(), hashes.values());
        item(*item(*menu, QStringLiteral("Category"))->menu(), QStringLiteral("Linux & BSD"))->trigger();
        item(*item(*menu, QStringLiteral("Tags"))->menu(), QStringLiteral("keep"))->trigger();
        item(*menu, QStringLiteral("Download in sequential order"))->trigger();
        item(*menu, QStringLiteral("Download first and last pieces first"))->trigger();
        item(*menu, QStringLiteral("Rename..."))->trigger();
        fillSheet(QStringLiteral("Renamed + = ok"), QStringLiteral("Rename"));
        QTRY_COMPARE(tnt(made.infoHash)->category(), QStringLiteral("Linux & BSD")); // at once
        QTRY_COMPARE(tnt(made.infoHash)->tags(), QStringLiteral("keep"));

        // The rest shows after a poll, read back from the server's own answer.
        QTRY_VERIFY_WITH_TIMEOUT(tnt(made.infoHash)->seqDl() && tnt(made.infoHash)->fLPiecePrio(), 10'000);
        QTRY_COMPARE_WITH_TIMEOUT(tnt(made.infoHash)->name(), QStringLiteral("Renamed + = ok"), 10'000);
        QCOMPARE(tnt(made.infoHash)->category(), QStringLiteral("Linux & BSD"));
        QCOMPARE(alert(), QString());

        menu = std::make_unique<TntContextMenu>(actions(), hashes.values());
        item(*menu, QStringLiteral("Set location..."))->trigger();
        const QString moved = m_data.serverPath + QStringLiteral("/moved");
        fillSheet(moved, QStringLiteral("Save"));
        QTRY_COMPARE_WITH_TIMEOUT(QDir::cleanPath(tnt(made.infoHash)->savePath()), moved, 15'000);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(m_data.localPath + QStringLiteral("/moved/menu.bin")), 15'000);
        QCOMPARE(alert(), QString());
    }

    // The switches and lists of the menu and the status bar, read back from the server's answers.
    void switchesAndListsReachTheServer()
    {
        const auto made = addSeeded(QStringLiteral("switches.bin"));
        wait(m_context->createTags({QStringLiteral("drop")}));
        auto menu = std::make_unique<TntContextMenu>(actions(), QStringList{made.infoHash});
        item(*menu, QStringLiteral("Force start"))->trigger();
        item(*menu, QStringLiteral("Automatic torrent management"))->trigger();
        item(*menu, QStringLiteral("Super seeding mode"))->trigger();
        item(*item(*menu, QStringLiteral("Tags"))->menu(), QStringLiteral("drop"))->trigger();
        item(*menu, QStringLiteral("Add trackers..."))->trigger();
        auto *sheet = qobject_cast<EditorSheet *>(commands().openSheet());
        QVERIFY(sheet);
        const QString tracker = QStringLiteral("http://127.0.0.1:3/announce");
        sheet->findChild<QPlainTextEdit *>()->setPlainText(QStringLiteral("  \n") + tracker + QStringLiteral("\n"));
        sheet->actionButton()->click();
        const bool limited = m_context->serverState().useAltSpeedLimits();
        m_window->transferStatus()->altSpeedSwitch()->click();

        const auto onServer = [&] {
            const TntModel *t = tnt(made.infoHash);
            return t->forceStart() && t->autoTmm() && t->superSeeding() && t->tags() == QStringLiteral("drop");
        };
        QTRY_VERIFY_WITH_TIMEOUT(onServer(), 10'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_context->serverState().useAltSpeedLimits(), !limited, 10'000);
        const auto trackers = wait(m_context->client()->trackers(made.infoHash));
        QVERIFY(std::any_of(trackers.cbegin(), trackers.cend(), [&](const API::Tracker &t) { return t.url == tracker; }));

        menu = std::make_unique<TntContextMenu>(actions(), QStringList{made.infoHash});
        item(*item(*menu, QStringLiteral("Tags"))->menu(), QStringLiteral("Remove all"))->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(tnt(made.infoHash)->tags(), QString(), 10'000);
        m_window->transferStatus()->altSpeedSwitch()->click();
        QTRY_COMPARE_WITH_TIMEOUT(m_context->serverState().useAltSpeedLimits(), limited, 10'000);
        QCOMPARE(alert(), QString());
    }

    void removeThroughTheConfirmation_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<bool>("dataKept");
        QTest::newRow("from the list") << QStringLiteral("Remove from List") << true;
        QTest::newRow("everywhere") << QStringLiteral("Remove Everywhere") << false;
    }

    void removeThroughTheConfirmation()
    {
        QFETCH(QString, choice);
        QFETCH(bool, dataKept);
        const auto made = addSeeded(QStringLiteral("remove-%1.bin").arg(dataKept));
        QVERIFY(QFileInfo::exists(made.contentPath));
        commands().remove({made.infoHash});
        auto *confirmation = qobject_cast<QMessageBox *>(commands().openSheet());
        QVERIFY(confirmation);
        QCOMPARE(confirmation->text(), QStringLiteral("Are you sure you want to remove 1 torrent?"));
        click(*confirmation, choice);
        QTRY_VERIFY(!tnt(made.infoHash)); // gone from the table at once
        QTRY_COMPARE_WITH_TIMEOUT(QFileInfo::exists(made.contentPath), dataKept, 10'000);
        m_context->forcePoll();
        QTest::qWait(1000);
        QVERIFY(!tnt(made.infoHash)); // and it stays gone
        QCOMPARE(alert(), QString());
    }

    void priorityWithoutQueueingGivesTheServersReason()
    {
        const auto made = addSeeded(QStringLiteral("queue.bin"));
        wait(m_context->client()->perform(API::Endpoint::Application::setPreferences(R"({"queueing_enabled":false})")));
        m_context->setSelectedTnts({made.infoHash});
        m_window->toolbarAction(QStringLiteral("increase_tnt_prio"))->trigger();
        QTRY_COMPARE(alert(), QStringLiteral("Failed to increase torrent priority.|Torrent queueing must be enabled"));
    }
};

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : QbtServer::flavors()) {
        TestTntOperations test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_tntoperations.moc"
