#include "ui/TntContentModel.h"

#include <QAbstractItemModelTester>
#include <QTest>

namespace {

// "Album/cd1/a.flac", "Album/cd1/c.flac", "Album/b.txt": file indexes 0, 1, 2.
FileTreeBuilder::Nodes album()
{
    return FileTreeBuilder::buildTree({{.index = 0, .name = u"Album/cd1/a.flac"_qs, .size = 100, .priority = 1},
                                       {.index = 1, .name = u"Album/cd1/c.flac"_qs, .size = 50, .priority = 1},
                                       {.index = 2, .name = u"Album/b.txt"_qs, .size = 1, .priority = 1}});
}

// The row at a "/"-separated path below the torrent's folder; the folder itself for "".
QModelIndex find(const TntContentModel &model, const QString &path)
{
    QModelIndex at = model.index(0, 0);
    const QStringList names = path.split(u'/', Qt::SkipEmptyParts);
    for (const QString &name : names) {
        const QModelIndex parent = at;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            if (model.index(row, 0, parent).data().toString() == name)
                at = model.index(row, 0, parent);
        }
        if (at == parent)
            return {};
    }
    return at;
}

} // namespace

// Check boxes and priorities of a torrent's content: folders follow their files.
class TestContentModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edits_data()
    {
        QTest::addColumn<QStringList>("edits"); // "<check|uncheck|skip|normal|high|maximal>:<path>"
        QTest::addColumn<QList<int>>("priorities");
        QTest::addColumn<QStringList>("states"); // check state and priority of "", "cd1"
        QTest::addColumn<bool>("chosen");
        QTest::newRow("as it comes") << QStringList() << QList<int>{1, 1, 1}
                                     << QStringList{u"2 Normal"_qs, u"2 Normal"_qs} << true;
        QTest::newRow("folder unchecked") << QStringList{u"uncheck:cd1"_qs} << QList<int>{0, 0, 1}
                                          << QStringList{u"1 Mixed"_qs, u"0 Do not download"_qs} << true;
        QTest::newRow("all unchecked from the top") << QStringList{u"uncheck:"_qs} << QList<int>{0, 0, 0}
                                                    << QStringList{u"0 Do not download"_qs, u"0 Do not download"_qs} << false;
        QTest::newRow("one file unchecked") << QStringList{u"uncheck:cd1/c.flac"_qs} << QList<int>{1, 0, 1}
                                            << QStringList{u"1 Mixed"_qs, u"1 Mixed"_qs} << true;
        QTest::newRow("rechecked keeps the chosen priority")
            << QStringList{u"high:cd1/a.flac"_qs, u"uncheck:cd1"_qs, u"check:cd1"_qs} << QList<int>{6, 1, 1}
            << QStringList{u"2 Mixed"_qs, u"2 Mixed"_qs} << true;
        QTest::newRow("a priority checks what it sets")
            << QStringList{u"uncheck:"_qs, u"maximal:cd1"_qs} << QList<int>{7, 7, 0}
            << QStringList{u"1 Mixed"_qs, u"2 Maximum"_qs} << true;
        QTest::newRow("skip is unchecking") << QStringList{u"skip:b.txt"_qs, u"high:cd1"_qs} << QList<int>{6, 6, 0}
                                            << QStringList{u"1 Mixed"_qs, u"2 High"_qs} << true;
        QTest::newRow("all high agree") << QStringList{u"high:"_qs} << QList<int>{6, 6, 6}
                                        << QStringList{u"2 High"_qs, u"2 High"_qs} << true;
    }

    void edits()
    {
        QFETCH(QStringList, edits);
        QFETCH(QList<int>, priorities);
        QFETCH(QStringList, states);
        QFETCH(bool, chosen);
        TntContentModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setNodes(album());
        const QHash<QString, TntContentModel::Priority> named{{u"skip"_qs, TntContentModel::skipped},
                                                              {u"normal"_qs, TntContentModel::normal},
                                                              {u"high"_qs, TntContentModel::high},
                                                              {u"maximal"_qs, TntContentModel::maximal}};
        for (const QString &edit : edits) {
            const QString verb = edit.section(u':', 0, 0);
            const QModelIndex row = find(model, edit.section(u':', 1));
            QVERIFY2(row.isValid(), qPrintable(edit));
            if (named.contains(verb))
                model.setPriority(row, named.value(verb));
            else
                QVERIFY(model.setData(row, verb == u"check" ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole));
        }
        QCOMPARE(model.filePriorities(3), priorities);
        QStringList found;
        for (const QString &path : {QString(), u"cd1"_qs}) {
            const QModelIndex row = find(model, path);
            found << QString::number(row.data(Qt::CheckStateRole).toInt()) + u' '
                         + row.siblingAtColumn(TntContentModel::priorityColumn).data().toString();
        }
        QCOMPARE(found, states);
        QCOMPARE(model.hasChosenFiles(), chosen);
    }

    // A file whose path formed no location is not in the tree: it keeps the server's normal priority.
    void filesOutsideTheTree()
    {
        TntContentModel model;
        model.setNodes(album());
        model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
        QCOMPARE(model.filePriorities(5), (QList<int>{0, 0, 0, 1, 1}));
    }
};

QTEST_MAIN(TestContentModel)
#include "tst_contentmodel.moc"
