#include "support/ScriptedTorrents.h"
#include "ui/MainWindow.h"
#include "ui/SettingsWindow.h"

#include <QAccessible>
#include <QTest>

namespace {

// What a screen reader lets the user act on: each needs a name to be told apart.
bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::List:
    case QAccessible::PageTabList: return true;
    default: return false;
    }
}

// The interactive elements without a name, by role and where they are.
void collectUnnamed(QAccessibleInterface *node, const QString &path, QStringList &unnamed)
{
    if (!node || node->state().invisible)
        return;
    const QString here = path + u'/' + QString::number(node->role(), 16);
    if (isInteractive(node->role()) && node->text(QAccessible::Name).trimmed().isEmpty()) {
        const QObject *object = node->object();
        unnamed << here + u' ' +
                       (object ? QString::fromLatin1(object->metaObject()->className()) + u' ' + object->objectName()
                               : QString());
    }
    // Rows and cells are named by their data; the table itself is checked above.
    if (node->role() == QAccessible::Table || node->role() == QAccessible::Tree || node->role() == QAccessible::List)
        return;
    for (int i = 0; i < node->childCount(); ++i)
        collectUnnamed(node->child(i), here, unnamed);
}

} // namespace

// The main window walked as assistive technology sees it.
class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsNamed_data()
    {
        QTest::addColumn<bool>("settings");
        QTest::newRow("main window") << false;
        QTest::newRow("settings window") << true;
    }

    void everyControlIsNamed()
    {
        QFETCH(bool, settings);
        ScriptedTorrents server;
        MainWindow window(*server.context);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QWidget *walked = &window;
        if (settings) {
            walked = window.openSettings();
            QVERIFY(QTest::qWaitForWindowExposed(walked));
        }

        QStringList unnamed;
        collectUnnamed(QAccessible::queryAccessibleInterface(walked), QString(), unnamed);
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(u'\n')));
    }

    // Tab reaches the sidebar, the filter field and the table, in the order they stand.
    void keyboardReachesTheTorrents()
    {
        ScriptedTorrents server;
        MainWindow window(*server.context);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        QStringList reached;
        QWidget *first = QApplication::focusWidget();
        QVERIFY(first);
        QWidget *focused = first;
        do {
            if (!focused->accessibleName().isEmpty())
                reached << focused->accessibleName();
            QTest::keyClick(focused, Qt::Key_Tab);
            focused = QApplication::focusWidget();
        } while (focused && focused != first && reached.size() < 50);
        const QStringList wanted{QStringLiteral("Filters"), QStringLiteral("Filter by name"),
                                 QStringLiteral("Torrents")};
        QStringList inOrder = reached;
        inOrder.removeIf([&wanted](const QString &name) { return !wanted.contains(name); });
        QVERIFY2(inOrder.contains(wanted.first()), qPrintable(reached.join(u", ")));
        // The chain is a circle: read it from the sidebar on.
        std::rotate(inOrder.begin(), inOrder.begin() + inOrder.indexOf(wanted.first()), inOrder.end());
        QCOMPARE(inOrder, wanted);
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
