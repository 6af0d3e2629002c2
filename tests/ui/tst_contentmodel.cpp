#include "settings/UserDefaults.h"
#include "ui/TntContentModel.h"
#include "ui/TntContentTree.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTemporaryDir>
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

QStringList allPaths(const TntContentModel &model, const QModelIndex &parent = {})
{
    QStringList paths;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        paths << model.nodeAt(index)->path << allPaths(model, index);
    }
    return paths;
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
                model.setPriority({row}, named.value(verb));
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

    void rename_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QStringList>("paths"); // every row's path afterwards, in tree order
        const QStringList before{u"Album"_qs, u"Album/cd1"_qs, u"Album/cd1/a.flac"_qs, u"Album/cd1/c.flac"_qs,
                                 u"Album/b.txt"_qs};
        QTest::newRow("file") << u"cd1/a.flac"_qs << u"A & B é.flac"_qs << QString()
                              << QStringList{u"Album"_qs, u"Album/cd1"_qs, u"Album/cd1/A & B é.flac"_qs,
                                             u"Album/cd1/c.flac"_qs, u"Album/b.txt"_qs};
        QTest::newRow("folder moves what is in it")
            << u"cd1"_qs << u"Disc 1"_qs << QString()
            << QStringList{u"Album"_qs, u"Album/Disc 1"_qs, u"Album/Disc 1/a.flac"_qs, u"Album/Disc 1/c.flac"_qs,
                           u"Album/b.txt"_qs};
        QTest::newRow("top folder") << u""_qs << u"Best"_qs << QString()
                                    << QStringList{u"Best"_qs, u"Best/cd1"_qs, u"Best/cd1/a.flac"_qs,
                                                   u"Best/cd1/c.flac"_qs, u"Best/b.txt"_qs};
        QTest::newRow("empty") << u"b.txt"_qs << u"  "_qs << u"A name cannot be empty."_qs << before;
        QTest::newRow("slash") << u"cd1"_qs << u"cd/2"_qs << u"A name cannot contain \"/\"."_qs << before;
        QTest::newRow("a neighbour's name") << u"b.txt"_qs << u"cd1"_qs << u"\"cd1\" is already there."_qs << before;
    }

    // A name typed into a row shows at once, with the paths below it; a bad one is refused with its reason.
    void rename()
    {
        QFETCH(QString, row);
        QFETCH(QString, name);
        QFETCH(QString, refusal);
        QFETCH(QStringList, paths);
        TntContentModel model(TntContentModel::Mode::details, nullptr);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setNodes(album());
        QSignalSpy renamed(&model, &TntContentModel::renamed);
        QSignalSpy refused(&model, &TntContentModel::renameRefused);
        const QModelIndex index = find(model, row);
        const QString oldPath = model.nodeAt(index)->path;
        QCOMPARE(model.setData(index, name, Qt::EditRole), refusal.isEmpty());
        QCOMPARE(allPaths(model), paths);
        QCOMPARE(refused.value(0).value(0).toString(), refusal);
        if (!refusal.isEmpty())
            return;
        QCOMPARE(index.data().toString(), name);
        QCOMPARE(renamed.value(0), (QVariantList{oldPath, model.nodeAt(index)->path, model.rowCount(index) > 0}));
    }

    void filter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("shown");
        const QStringList all{u"Album"_qs, u"Album/cd1"_qs, u"Album/cd1/a.flac"_qs, u"Album/cd1/c.flac"_qs,
                              u"Album/b.txt"_qs};
        QTest::newRow("a file keeps its folders") << u"A.FLAC"_qs << QStringList{u"Album"_qs, u"Album/cd1"_qs, u"Album/cd1/a.flac"_qs};
        QTest::newRow("a folder keeps what is in it") << u"cd"_qs << all.mid(0, 4);
        QTest::newRow("top level file") << u"txt"_qs << QStringList{u"Album"_qs, u"Album/b.txt"_qs};
        QTest::newRow("nothing") << u"ogg"_qs << QStringList();
        QTest::newRow("cleared") << QString() << all;
    }

    // The tree shows the rows the filter keeps: matches, what is in a matching folder, and the
    // folders above them.
    void filter()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, shown);
        QTemporaryDir dir;
        UserDefaults defaults(dir.filePath(u"Quillo.ini"_qs));
        TntContentTree tree(defaults, nullptr, TntContentModel::Mode::details);
        tree.setNodes(album());
        tree.setNameFilter(u"b.txt"_qs); // whatever was filtered before is undone
        tree.setNameFilter(text);
        QStringList found;
        const std::function<void(const QModelIndex &)> visit = [&](const QModelIndex &parent) {
            for (int row = 0; row < tree.model()->rowCount(parent); ++row) {
                if (tree.isRowHidden(row, parent))
                    continue;
                const QModelIndex index = tree.model()->index(row, 0, parent);
                found << tree.contentModel()->nodeAt(index)->path;
                visit(index);
            }
        };
        visit({});
        QCOMPARE(found, shown);
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
