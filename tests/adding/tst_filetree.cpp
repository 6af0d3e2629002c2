#include "adding/FileTreeBuilder.h"
#include "support/Await.h"

#include <QTest>

namespace {

using Files = QList<API::File>;

API::File file(const QString &path, qint64 size, double progress = 0, double priority = 1, double availability = 0)
{
    static qint64 index = 0;
    return {.index = index++, .name = path, .size = size, .progress = progress, .priority = priority,
            .availability = availability};
}

// Files by name; folders as name(size progress remaining availability)[children], checking the
// links back to each parent on the way.
QString render(const FileTreeBuilder::Nodes &nodes, const std::shared_ptr<TntFileNode> &parent = {})
{
    QStringList parts;
    for (const auto &node : nodes) {
        if (node->parent.lock() != parent)
            return u"broken parent link at "_qs + node->path;
        if (!node->children) {
            parts << node->name;
            continue;
        }
        parts << u"%1(%2 %3 %4 %5)[%6]"_qs.arg(node->name)
                     .arg(node->size)
                     .arg(node->progress)
                     .arg(node->remaining)
                     .arg(node->availability)
                     .arg(render(*node->children, node));
    }
    return parts.join(u',');
}

} // namespace

class TestFileTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sums_data()
    {
        QTest::addColumn<Files>("files");
        QTest::addColumn<QString>("tree");

        QTest::newRow("finished beside skipped reads half done")
            << Files{file(u"F/done"_qs, 100, 1), file(u"F/skipped"_qs, 100, 0, 0)} << u"F(200 0.5 0 0)[done,skipped]"_qs;
        QTest::newRow("all skipped") << Files{file(u"F/a"_qs, 100, 0.5, 0), file(u"F/b"_qs, 50, 0, 0)}
                                     << u"F(150 0 0 0)[a,b]"_qs;
        QTest::newRow("remaining truncated per file")
            << Files{file(u"F/a"_qs, 3, 0.5), file(u"F/b"_qs, 3, 0.5)} << u"F(6 0.666667 2 0)[a,b]"_qs;
        QTest::newRow("sums reach every folder above")
            << Files{file(u"Album/cd1/a.flac"_qs, 100, 0, 1, 1), file(u"Album/b.txt"_qs, 300, 1, 6, 2)}
            << u"Album(400 0.75 100 1.5)[cd1(100 0 100 1)[a.flac],b.txt]"_qs;
        QTest::newRow("top-level files are roots, input order kept")
            << Files{file(u"z"_qs, 1), file(u"D/x"_qs, 1, 1), file(u"a"_qs, 1), file(u"D/y"_qs, 1, 1)}
            << u"z,D(2 1 0 0)[x,y],a"_qs;
        QTest::newRow("a folder met again after another")
            << Files{file(u"A/1"_qs, 1), file(u"B/2"_qs, 1), file(u"A/C/3"_qs, 1)}
            << u"A(2 0 2 0)[1,C(1 0 1 0)[3]],B(1 0 1 0)[2]"_qs;
        QTest::newRow("paths without a location left out, empty components dropped")
            << Files{file(QString(), 1), file(u"/"_qs, 1), file(u"//a//b/"_qs, 1), file(QString(4097, u'a'), 1)}
            << u"a(1 0 1 0)[b]"_qs;
    }

    void sums()
    {
        QFETCH(Files, files);
        QFETCH(QString, tree);
        QCOMPARE(render(FileTreeBuilder::buildTree(files)), tree);
    }

    void nodesCarryTheirFile()
    {
        const Files files{{.index = 4, .name = u"D/song.flac"_qs, .size = 9, .progress = 0.25, .priority = 0,
                           .pieceRange = {2, 3}, .availability = 1.5},
                          {.index = 5, .name = u"D/wanted.txt"_qs, .size = 8, .progress = 0.25, .priority = 1}};
        FileTreeBuilder builder;
        const FileTreeBuilder::Nodes roots = QuilloTest::wait(builder.build(files));
        const TntFileNode &folder = *roots.constFirst();
        QCOMPARE(folder.utType, u"inode/directory"_qs);
        QCOMPARE(folder.path, u"D"_qs);
        QCOMPARE(folder.index, -1);
        const TntFileNode &song = *folder.children->constFirst();
        QCOMPARE(song.utType, u"audio/flac"_qs);
        QCOMPARE(song.path, u"D/song.flac"_qs);
        QCOMPARE(song.index, 4);
        QCOMPARE(song.progress, 0.25);
        QCOMPARE(song.pieceRange, (QList<qint64>{2, 3}));
        QCOMPARE(song.isSelected, false);
        QCOMPARE(song.remaining, 0);
        // What is left of a file being downloaded shows on the file itself, not only its folder.
        QCOMPARE(folder.children->constLast()->remaining, 6);
    }
};

QTEST_GUILESS_MAIN(TestFileTree)
#include "tst_filetree.moc"
