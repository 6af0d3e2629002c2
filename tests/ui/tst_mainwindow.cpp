#include "ConnectionFixture.h"
#include "ui/MainWindow.h"
#include "ui/WelcomeView.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

    KeychainStore m_keychain;

private Q_SLOTS:
    void showsWelcomeWithoutConnections()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("Quillo"));

        QStringList texts;
        for (const QLabel *label : window.findChildren<QLabel *>())
            texts << label->text();
        QVERIFY(texts.contains(QStringLiteral("Welcome to Quillo")));
        QVERIFY(texts.contains(QStringLiteral("Connect to qBittorrent to start managing your torrents.")));

        const WelcomeView *welcome = window.welcomeView();
        QVERIFY(welcome->isVisible());
        QCOMPARE(welcome->connectToServerButton()->text(),
                 QStringLiteral("Connect to a Server\nUse qBittorrent running on another computer or a NAS."));
        QCOMPARE(welcome->installLocallyButton()->text(),
                 QStringLiteral("Install on This Computer\nDownload qBittorrent and run it in the background."));
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
