#include "support/ScriptedTorrents.h"
#include "ui/MainWindow.h"

#include <QTest>
#include <QWindow>
#include <qpa/qplatformwindow.h>

// The window's request for attention on a real X display: the offscreen plugin keeps no such state.
class TestAttention : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One request per batch of finished downloads, which ends by itself: a request without an end
    // keeps the task bar flashing until the window is looked at.
    void finishedDownloadsAskForAWhile()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        ScriptedTorrents server;
        MainWindow window(*server.context);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QPlatformWindow *platformWindow = window.windowHandle()->handle();
        QVERIFY(!platformWindow->isAlertState());

        Q_EMIT server.context->completionNotifier().attentionRequested();
        QVERIFY(platformWindow->isAlertState());
        QTRY_VERIFY_WITH_TIMEOUT(!platformWindow->isAlertState(), 10'000);
    }
};

QTEST_MAIN(TestAttention)
#include "tst_attention.moc"
