#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/EditorSheet.h"
#include "ui/MainMenus.h"
#include "ui/MainWindow.h"
#include "ui/PathMappingPage.h"
#include "ui/PreferencesPage.h"
#include "ui/ServerPreferences.h"
#include "ui/SettingsWindow.h"
#include "ui/TntTableView.h"
#include "ui/Translation.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>

#include <functional>

using Edit = std::function<void(QWidget &page)>;
using Stored = std::function<QVariant(AppContext &)>;
Q_DECLARE_METATYPE(Edit)
Q_DECLARE_METATYPE(Stored)

namespace {

// The field of a form row by its label, or a switch by its own text.
template <typename Field> Field *field(QWidget &page, const QString &text)
{
    for (QCheckBox *box : page.findChildren<QCheckBox *>()) {
        if (box->text() == text)
            return qobject_cast<Field *>(box);
    }
    for (QLabel *label : page.findChildren<QLabel *>()) {
        if (label->text() == text && label->buddy())
            return qobject_cast<Field *>(label->buddy());
    }
    return nullptr;
}

} // namespace

// The settings window offscreen, over a scripted server.
class TestSettingsWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;
    QByteArray m_preferences;
    int m_writeStatus = 200;
    QByteArray m_writeAnswer;
    std::chrono::milliseconds m_writeTime{0};
    QList<QJsonObject> m_written;

    // The server's preferences answer the window reads, and what its writes carried.
    void servePreferences()
    {
        const FakeServer::Handler scripted = m_server->server.handler();
        m_server->server.setHandler([this, scripted](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/preferences"))
                return FakeServer::Response::json(m_preferences);
            if (request.target.endsWith("/app/networkInterfaceList"))
                return FakeServer::Response::json(
                    R"([{"name":"Ethernet","value":"eth0"},{"name":"Loopback","value":"lo"}])");
            if (request.target.endsWith("/app/networkInterfaceAddressList"))
                return FakeServer::Response::json(request.body.contains("iface=lo") ? R"(["127.0.0.1"])"
                                                                                    : R"(["192.168.1.2"])");
            if (request.target.endsWith("/app/setPreferences")) {
                const QByteArray form = request.body;
                const QByteArray json =
                    QByteArray::fromPercentEncoding(form.mid(form.indexOf('=') + 1).replace('+', ' '));
                m_written.append(QJsonDocument::fromJson(json).object());
                FakeServer::Response response = FakeServer::Response::text(m_writeStatus, m_writeAnswer);
                response.delay = m_writeTime;
                return response;
            }
            return scripted(request);
        });
    }

    SettingsWindow &openSettings()
    {
        QMenu *edit = m_window->menus()->menu(QStringLiteral("Edit"));
        QuilloTest::menuItem(*edit, QStringLiteral("Preferences..."))->trigger();
        auto *settings = m_window->findChild<SettingsWindow *>();
        Q_ASSERT(settings && settings->isVisible());
        return *settings;
    }

private Q_SLOTS:
    void init()
    {
        m_written.clear();
        m_writeStatus = 200;
        m_writeAnswer.clear();
        m_writeTime = {};
        m_server = std::make_unique<ScriptedTorrents>();
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void ownSettingsWaitForApply_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<Stored>("stored");
        QTest::addColumn<QVariant>("before");
        QTest::addColumn<QVariant>("after");
        QTest::newRow("switch") << Edit([](QWidget &page) {
            field<QCheckBox>(page, QStringLiteral("Ask before removing torrents"))->setChecked(false);
        }) << Stored([](AppContext &c) {
            return QVariant(c.settings().defaults().boolValue(UserDefaultsKey::confirmTntDeleting, true));
        }) << QVariant(true) << QVariant(false);
        QTest::newRow("number") << Edit([](QWidget &page) {
            field<QSpinBox>(page, QStringLiteral("Refresh interval:"))->setValue(4500);
        }) << Stored([](AppContext &c) { return QVariant(c.settings().refreshInterval()); })
                                << QVariant(2000) << QVariant(4500);
        QTest::newRow("choice") << Edit([](QWidget &page) {
            field<QComboBox>(page, QStringLiteral("Refresh:"))->setCurrentText(QStringLiteral("At a fixed interval"));
        }) << Stored([](AppContext &c) { return QVariant(static_cast<int>(c.settings().refreshMode())); })
                                << QVariant(static_cast<int>(RefreshMode::adaptive))
                                << QVariant(static_cast<int>(RefreshMode::fixed));
        QTest::newRow("setting of the context") << Edit([](QWidget &page) {
            field<QCheckBox>(page, QStringLiteral("Notify when downloads complete"))->setChecked(false);
        }) << Stored([](AppContext &c) { return QVariant(c.settings().notifyDownloadsComplete()); })
                                                << QVariant(true) << QVariant(false);
    }

    void ownSettingsWaitForApply()
    {
        QFETCH(Edit, edit);
        QFETCH(Stored, stored);
        QFETCH(QVariant, before);
        QFETCH(QVariant, after);
        SettingsWindow &settings = openSettings();
        QWidget &page = *settings.page(QStringLiteral("quillo"));
        QVERIFY(!settings.applyButton()->isEnabled());
        edit(page);
        QVERIFY(settings.applyButton()->isEnabled());
        QCOMPARE(stored(*m_server->context), before);
        settings.applyButton()->click();
        QCOMPARE(stored(*m_server->context), after);
        QVERIFY(!settings.applyButton()->isEnabled());

        // Cancel leaves what was stored.
        settings.reject();
        SettingsWindow &again = openSettings();
        QWidget &reopened = *again.page(QStringLiteral("quillo"));
        edit(reopened); // the same edit again changes nothing stored
        QVERIFY(!again.applyButton()->isEnabled());
    }

    void boundsAreTheSettingsBounds()
    {
        QWidget &page = *openSettings().page(QStringLiteral("quillo"));
        QSpinBox *interval = field<QSpinBox>(page, QStringLiteral("Refresh interval:"));
        QCOMPARE(interval->minimum(), AppSettings::refreshIntervalBounds.minimum);
        QCOMPARE(interval->maximum(), AppSettings::refreshIntervalBounds.maximum);
        QSpinBox *window = field<QSpinBox>(page, QStringLiteral("Speeds averaged over:"));
        QCOMPARE(window->maximum(), AppSettings::averagingWindowBounds.maximum);
        // The interval is the server's while following it, and the shortest pause while adapting.
        QComboBox *mode = field<QComboBox>(page, QStringLiteral("Refresh:"));
        QCOMPARE(mode->currentText(), QStringLiteral("Adapt to the server's speed"));
        QVERIFY(interval->isEnabled());
        mode->setCurrentText(QStringLiteral("Follow the server's refresh interval"));
        QVERIFY(!interval->isEnabled());
    }

    void alternateRowsFollowAtOnce()
    {
        SettingsWindow &settings = openSettings();
        QTableView *table = m_window->tntTable()->table();
        QVERIFY(table->alternatingRowColors());
        field<QCheckBox>(*settings.page(QStringLiteral("quillo")), QStringLiteral("Alternate row colors"))
            ->setChecked(false);
        settings.applyButton()->click();
        QVERIFY(!table->alternatingRowColors());
    }

    void pathMappingsAreEditedThenApplied()
    {
        SettingsWindow &settings = openSettings();
        auto &page = *static_cast<PathMappingPage *>(settings.page(QStringLiteral("pathMapping")));
        QVERIFY(!page.removeButton()->isEnabled());
        const auto add = [&page](const QString &remote, const QString &local) {
            page.addButton()->click();
            auto *sheet = page.findChild<EditorSheet *>();
            QVERIFY(sheet && sheet->isVisible());
            QList<QLineEdit *> lines = sheet->findChildren<QLineEdit *>();
            QCOMPARE(lines.size(), 2);
            QCOMPARE(lines.at(0)->placeholderText(), QStringLiteral("/opt/etc/downloads/"));
            QVERIFY(!sheet->actionButton()->isEnabled());
            lines.at(0)->setText(remote);
            lines.at(1)->setText(local);
            sheet->actionButton()->click();
            delete sheet;
        };
        add(QStringLiteral("/data"), QStringLiteral("/mnt/a"));
        add(QStringLiteral("/data/movies"), QStringLiteral("/mnt/b"));
        QCOMPARE(page.list()->topLevelItemCount(), 2);
        QVERIFY(m_server->context->settings().pathMapping().isEmpty());
        QVERIFY(settings.applyButton()->isEnabled());
        settings.applyButton()->click();
        const QList<PathMap> stored = m_server->context->settings().pathMapping();
        QCOMPARE(stored.size(), 2);
        QCOMPARE(stored.at(0).remotePath, QStringLiteral("/data")); // the order they are tried in
        QCOMPARE(stored.at(1).bookmarkData, QByteArray("/mnt/b"));

        page.list()->setCurrentItem(page.list()->topLevelItem(0));
        page.removeButton()->click();
        settings.applyButton()->click();
        QCOMPARE(m_server->context->settings().pathMapping().size(), 1);
        QCOMPARE(m_server->context->settings().pathMapping().constFirst().remotePath, QStringLiteral("/data/movies"));
    }

    void serverPreferencesWriteOnlyWhatWasEdited()
    {
        m_preferences = R"({"save_path":"/downloads","listen_port":6881,"dht":true,"dl_limit":0,
                            "encryption":0,"max_ratio":1.5,"max_ratio_enabled":true,"scan_dirs":{},
                            "a_key_of_a_newer_server":"kept"})";
        servePreferences();
        SettingsWindow &settings = openSettings();
        QTRY_VERIFY(settings.page(QStringLiteral("connection")));
        auto &connection = *static_cast<PreferencesPage *>(settings.page(QStringLiteral("connection")));
        auto *port = qobject_cast<QSpinBox *>(connection.field(QStringLiteral("listenPort")));
        QVERIFY(port);
        QCOMPARE(port->value(), 6881);
        QCOMPARE(port->maximum(), 65535); // a port the server would refuse cannot be typed
        // What the server did not send is not shown.
        QVERIFY(!connection.field(QStringLiteral("upnp")));
        QVERIFY(!settings.applyButton()->isEnabled());

        port->setValue(7000);
        auto &speed = *static_cast<PreferencesPage *>(settings.page(QStringLiteral("speed")));
        qobject_cast<QSpinBox *>(speed.field(QStringLiteral("dlLimit")))->setValue(500);
        QVERIFY(settings.applyButton()->isEnabled());
        m_writeTime = std::chrono::milliseconds(300);
        settings.applyButton()->click();
        QTRY_COMPARE(m_written.size(), 1);
        QCOMPARE(m_written.constFirst(),
                 (QJsonObject{{QStringLiteral("listen_port"), 7000}, {QStringLiteral("dl_limit"), 500 * 1024}}));

        // An edit made while the write is under way was not written with it, and stays to be applied.
        auto &downloads = *static_cast<PreferencesPage *>(settings.page(QStringLiteral("downloads")));
        auto *savePath = qobject_cast<QLineEdit *>(downloads.field(QStringLiteral("savePath")));
        savePath->setText(QStringLiteral("/downloads/meanwhile"));
        Q_EMIT savePath->textEdited(savePath->text());
        auto *buttons = settings.findChild<QDialogButtonBox *>();
        QTRY_VERIFY(buttons->isEnabled());
        QVERIFY(settings.failureLabel()->isHidden());
        QVERIFY(settings.applyButton()->isEnabled());
        m_writeTime = {};
        settings.applyButton()->click();
        QTRY_COMPARE(m_written.size(), 2);
        QCOMPARE(m_written.constLast(), (QJsonObject{{QStringLiteral("save_path"), QStringLiteral("/downloads/meanwhile")}}));
        QTRY_VERIFY(buttons->isEnabled() && !settings.applyButton()->isEnabled());

        // An empty save path is marked and never sent.
        savePath->setText(QStringLiteral(" "));
        Q_EMIT savePath->textEdited(savePath->text());
        QVERIFY(savePath->property("invalid").toBool());
        QVERIFY(!settings.applyButton()->isEnabled());
        QVERIFY(!buttons->button(QDialogButtonBox::Ok)->isEnabled());
        savePath->setText(QStringLiteral("/downloads/new"));
        Q_EMIT savePath->textEdited(savePath->text());
        QVERIFY(!savePath->property("invalid").toBool());
        QVERIFY(settings.applyButton()->isEnabled());
    }

    void networkPickersOfferWhatTheServerLists()
    {
        m_preferences = R"({"current_network_interface":"eth0","current_interface_name":"Ethernet",
                            "current_interface_address":"192.168.1.2"})";
        servePreferences();
        SettingsWindow &settings = openSettings();
        QTRY_VERIFY(settings.page(QStringLiteral("advanced")));
        auto &advanced = *static_cast<PreferencesPage *>(settings.page(QStringLiteral("advanced")));
        auto *interfaces = qobject_cast<QComboBox *>(advanced.field(QStringLiteral("currentNetworkInterface")));
        auto *addresses = qobject_cast<QComboBox *>(advanced.field(QStringLiteral("currentInterfaceAddress")));
        QVERIFY(interfaces && addresses);
        const auto texts = [](const QComboBox &combo) {
            QStringList found;
            for (int index = 0; index < combo.count(); ++index)
                found << combo.itemText(index);
            return found;
        };
        QTRY_COMPARE(texts(*interfaces), (QStringList{QStringLiteral("Any interface"), QStringLiteral("Ethernet"),
                                                      QStringLiteral("Loopback")}));
        QCOMPARE(interfaces->currentText(), QStringLiteral("Ethernet"));
        QTRY_COMPARE(texts(*addresses),
                     (QStringList{QStringLiteral("All addresses"), QStringLiteral("All IPv4 addresses"),
                                  QStringLiteral("All IPv6 addresses"), QStringLiteral("192.168.1.2")}));
        QCOMPARE(addresses->currentText(), QStringLiteral("192.168.1.2"));
        QVERIFY(!settings.applyButton()->isEnabled());

        Q_EMIT interfaces->activated(2);
        interfaces->setCurrentIndex(2);
        QTRY_VERIFY(texts(*addresses).contains(QStringLiteral("127.0.0.1")));
        Q_EMIT addresses->activated(addresses->findText(QStringLiteral("127.0.0.1")));
        settings.applyButton()->click();
        QTRY_COMPARE(m_written.size(), 1);
        QCOMPARE(m_written.constFirst(),
                 (QJsonObject{{QStringLiteral("current_network_interface"), QStringLiteral("lo")},
                              {QStringLiteral("current_interface_name"), QStringLiteral("Loopback")},
                              {QStringLiteral("current_interface_address"), QStringLiteral("127.0.0.1")}}));
    }

    // In German: the server's preferences, their enumerations told apart by their comment, and a
    // translated choice stored as the word the notifier knows.
    void inGerman()
    {
        QVERIFY(installTranslations(*QCoreApplication::instance(), QLocale(QStringLiteral("de_DE"))));
        const auto removeTranslators = qScopeGuard([] {
            for (QTranslator *translator : QCoreApplication::instance()->findChildren<QTranslator *>()) {
                QCoreApplication::removeTranslator(translator);
                delete translator;
            }
        });
        m_preferences = R"({"disk_io_type":0,"max_ratio_act":1})";
        servePreferences();
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
        QMenu *edit = m_window->menus()->menu(QStringLiteral("Bearbeiten"));
        QuilloTest::menuItem(*edit, QStringLiteral("Einstellungen..."))->trigger();
        auto &settings = *m_window->findChild<SettingsWindow *>();
        QTRY_VERIFY(settings.page(QStringLiteral("advanced")));
        QStringList tabs;
        for (int index = 0; index < settings.tabs()->count(); ++index)
            tabs << settings.tabs()->tabText(index);
        QVERIFY2(tabs.contains(QStringLiteral("Pfadzuordnung")) && tabs.contains(QStringLiteral("Erweitert")),
                 qPrintable(tabs.join(u", ")));
        auto *ioType =
            field<QComboBox>(*settings.page(QStringLiteral("advanced")), QStringLiteral("Art der Festplatten-E/A:"));
        QVERIFY(ioType);
        QCOMPARE(ioType->currentText(), QStringLiteral("Standard"));
        auto *action = field<QComboBox>(*settings.page(QStringLiteral("bitTorrent")),
                                        QStringLiteral("Aktion, wenn eine Seed-Begrenzung erreicht ist:"));
        QVERIFY(action);
        QCOMPARE(action->currentText(), QStringLiteral("Torrent entfernen"));

        m_server->context->settings().setSelectedSound(QStringLiteral("bell"));
        settings.close();
        QuilloTest::menuItem(*edit, QStringLiteral("Einstellungen..."))->trigger();
        auto &reopened = *m_window->findChild<SettingsWindow *>();
        auto *sound = field<QComboBox>(*reopened.page(QStringLiteral("quillo")), QStringLiteral("Klang:"));
        QVERIFY(sound);
        sound->setCurrentIndex(0);
        QCOMPARE(sound->currentText(), QStringLiteral("Standard"));
        reopened.apply();
        QCOMPARE(m_server->context->settings().selectedSound(), QStringLiteral("Default"));
    }

    void refusedWriteKeepsTheEdits()
    {
        m_preferences = R"({"web_ui_username":"admin","listen_port":6881})";
        m_writeStatus = 400;
        m_writeAnswer = "WebUI username must be at least 3 characters long";
        servePreferences();
        SettingsWindow &settings = openSettings();
        QTRY_VERIFY(settings.page(QStringLiteral("webUi")));
        auto &webUi = *static_cast<PreferencesPage *>(settings.page(QStringLiteral("webUi")));
        auto *user = qobject_cast<QLineEdit *>(webUi.field(QStringLiteral("webUiUsername")));
        QVERIFY(user);
        user->setText(QStringLiteral("ab"));
        Q_EMIT user->textEdited(user->text());
        QPushButton *ok = settings.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        ok->click();
        QTRY_VERIFY(settings.failureLabel()->isVisible());
        QVERIFY(settings.failureLabel()->text().startsWith(QStringLiteral("Failed to set QBt preferences.")));
        QVERIFY(settings.failureLabel()->text().contains(QString::fromLatin1(m_writeAnswer)));
        // Still open, with the edit and Apply to send it again.
        QVERIFY(settings.isVisible());
        QCOMPARE(user->text(), QStringLiteral("ab"));
        QVERIFY(settings.applyButton()->isEnabled());
        m_writeStatus = 200;
        settings.applyButton()->click();
        QTRY_COMPARE(m_written.size(), 2);
        QTRY_VERIFY(settings.failureLabel()->isHidden());
    }

    void failedReadCanBeTriedAgain()
    {
        m_preferences = R"({"listen_port":"not a number"})";
        servePreferences();
        SettingsWindow &settings = openSettings();
        QTRY_VERIFY(settings.failureLabel()->isVisible());
        QVERIFY(settings.failureLabel()->text().startsWith(QStringLiteral("Failed to get QBt preferences.")));
        QVERIFY(!settings.page(QStringLiteral("connection")));
        m_preferences = R"({"listen_port":6881})";
        QuilloTest::button(settings, QStringLiteral("Try Again"))->click();
        QTRY_VERIFY(settings.page(QStringLiteral("connection")));
        QVERIFY(settings.failureLabel()->isHidden());
    }

    void reopensTheLastPage()
    {
        SettingsWindow &settings = openSettings();
        QCOMPARE(settings.tabs()->tabText(settings.tabs()->currentIndex()), QStringLiteral("Quillo"));
        settings.tabs()->setCurrentIndex(1);
        settings.close();
        SettingsWindow &reopened = openSettings();
        QCOMPARE(reopened.tabs()->tabText(reopened.tabs()->currentIndex()), QStringLiteral("Path Mapping"));
    }
};

QTEST_MAIN(TestSettingsWindow)
#include "tst_settingswindow.moc"
