#include "settings/UserDefaults.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace {

API::STntModel torrent(const QString &name, qint64 size)
{
    API::STntModel tnt;
    tnt.name = name;
    tnt.size = size;
    tnt.state = TntModel::State::uploading;
    return tnt;
}

QStringList shownNames(const QTableView &table)
{
    QStringList names;
    for (int row = 0; row < table.model()->rowCount(); ++row)
        names << table.model()->index(row, TntTableModel::NameColumn).data().toString();
    return names;
}

} // namespace

// The table as a user drives it: header clicks sort, the filter field narrows, rows get selected.
class TestTntView : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void sortsFiltersAndSelectsThroughTheWidgets()
    {
        UserDefaults defaults(m_dir.filePath(QStringLiteral("Quillo.ini")));
        TntCollection collection;
        collection.replaceAll(TntCollection::build({{QStringLiteral("a"), torrent(QStringLiteral("Part 10"), 10)},
                                                    {QStringLiteral("b"), torrent(QStringLiteral("Part 2"), 300)},
                                                    {QStringLiteral("c"), torrent(QStringLiteral("Ülysses"), 20)},
                                                    {QStringLiteral("d"), torrent(QStringLiteral("ulysses notes"), 5)}},
                                                   5));
        TntTableView view(collection, defaults);
        view.resize(900, 400);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QTableView &table = *view.table();
        QHeaderView *header = table.horizontalHeader();

        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(TntTableModel::NameColumn) + 5, 5));
        if (header->sortIndicatorOrder() != Qt::AscendingOrder)
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(TntTableModel::NameColumn) + 5, 5));
        // Numbers as numbers, case and accents folded for the order too.
        QCOMPARE(shownNames(table).mid(0, 2), (QStringList{u"Part 2"_qs, u"Part 10"_qs}));

        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(TntTableModel::SizeColumn) + 5, 5));
        const auto sizes = [&] {
            QList<qint64> values;
            for (int row = 0; row < table.model()->rowCount(); ++row)
                values << table.model()->index(row, TntTableModel::SizeColumn).data(TntTableModel::SortRole).toLongLong();
            return values;
        }();
        QVERIFY(std::is_sorted(sizes.begin(), sizes.end()) || std::is_sorted(sizes.rbegin(), sizes.rend()));

        QTest::keyClicks(view.filterField(), QStringLiteral("ULYS"));
        QTRY_COMPARE(table.model()->rowCount(), 2); // after the typing pause
        QVERIFY(shownNames(table).contains(u"Ülysses"_qs));

        QSet<QString> selected;
        connect(&view, &TntTableView::selectionChanged, this, [&selected](const QSet<QString> &hashes) { selected = hashes; });
        table.selectAll();
        QCOMPARE(selected, (QSet<QString>{u"c"_qs, u"d"_qs})); // what is shown, by hash
        view.filterField()->clear();
        QTRY_COMPARE(table.model()->rowCount(), 4);
    }

    void columnLayoutIsRemembered()
    {
        const QString ini = m_dir.filePath(QStringLiteral("Columns.ini"));
        TntCollection collection;
        {
            UserDefaults defaults(ini);
            TntTableView view(collection, defaults);
            view.table()->horizontalHeader()->resizeSection(TntTableModel::NameColumn, 411);
        }
        {
            // Hiding alone: the header resizes the column to 0 before it marks it hidden.
            UserDefaults defaults(ini);
            TntTableView view(collection, defaults);
            view.table()->horizontalHeader()->actions().at(TntTableModel::TagsColumn)->setChecked(false);
        }
        UserDefaults reopened(ini);
        TntTableView view(collection, reopened);
        QVERIFY(view.table()->horizontalHeader()->isSectionHidden(TntTableModel::TagsColumn));
        QVERIFY(!view.table()->horizontalHeader()->actions().at(TntTableModel::TagsColumn)->isChecked());
        QCOMPARE(view.table()->horizontalHeader()->sectionSize(TntTableModel::NameColumn), 411);
    }
};

QTEST_MAIN(TestTntView)
#include "tst_tntview.moc"
