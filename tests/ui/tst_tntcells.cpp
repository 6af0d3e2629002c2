#include "model/TntModel.h"
#include "ui/PairShaper.h"
#include "ui/RowPanelStyle.h"
#include "ui/TntCells.h"
#include "ui/TntTableModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QStaticText>
#include <QStandardItemModel>
#include <QStyleFactory>
#include <QTableView>
#include <QTest>

#include <cstdlib>

namespace {

// The progress bar as the style draws it straight onto the view.
class StyleProgressDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionProgressBar bar;
        bar.rect = option.rect.adjusted(2, 3, -2, -3);
        bar.maximum = 1000;
        bar.progress = static_cast<int>(index.data(TntTableModel::ProgressRole).toDouble() * 1000);
        bar.text = index.data().toString();
        bar.textVisible = true;
        bar.state = option.state | QStyle::State_Horizontal;
        bar.palette = option.palette;
        bar.palette.setColor(QPalette::Highlight, option.palette.color(QPalette::Highlight));
        QApplication::style()->drawControl(QStyle::CE_ProgressBar, &bar, painter);
    }
};

// One row of cells, a column per case, painted by `delegate` into an image per cell.
struct Row
{
    QStandardItemModel model;
    QTableView view;

    Row(QAbstractItemDelegate *delegate, const QList<QStandardItem *> &cells, const QList<int> &widths, bool selected)
    {
        model.appendRow(cells);
        view.setModel(&model);
        delegate->setParent(&view); // a view does not own its delegates
        view.setItemDelegate(delegate);
        view.setShowGrid(false);
        view.setWordWrap(false);
        for (int column = 0; column < widths.size(); ++column)
            view.horizontalHeader()->resizeSection(column, widths.at(column));
        view.resize(1300, 120);
        if (selected)
            view.selectRow(0);
        view.show();
    }

    QImage cell(int column)
    {
        const QImage all = view.viewport()->grab().toImage();
        return all.copy(view.visualRect(model.index(0, column)));
    }
};

QStandardItem *text(const QString &shown, Qt::Alignment alignment = {})
{
    auto *item = new QStandardItem(shown);
    if (alignment)
        item->setData(QVariant(alignment), Qt::TextAlignmentRole);
    return item;
}

QStandardItem *progress(double fraction)
{
    auto *item = new QStandardItem(TntFormat::percent(fraction));
    item->setData(fraction, TntTableModel::ProgressRole);
    item->setData(static_cast<int>(TntModel::State::downloading), TntTableModel::StateRole);
    return item;
}

bool hasInk(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != image.pixel(0, 0))
                return true;
    return false;
}

// Equal but for rounding: the bar's antialiased corners blend into a transparent pixmap first.
bool sameLook(const QImage &left, const QImage &right)
{
    if (left.size() != right.size())
        return false;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb a = left.pixel(x, y);
            const QRgb b = right.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) > 2 || std::abs(qGreen(a) - qGreen(b)) > 2 ||
                std::abs(qBlue(a) - qBlue(b)) > 2)
                return false;
        }
    }
    return true;
}

} // namespace

// The cheap cells against the style's own painting of the same cells, pixel for pixel.
class TestTntCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textCellsLookAsTheStylePaintsThem_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("plain") << false;
        QTest::newRow("selected") << true;
    }

    void textCellsLookAsTheStylePaintsThem()
    {
        QFETCH(bool, selected);
        const QString name = QStringLiteral("Public Domain Audiobooks — Ülysses");
        const QString kerned = QStringLiteral("AVATAR To Wé Ty.Vy");
        const auto cells = [&name, &kerned] {
            return QList<QStandardItem *>{
                text(name), // fits
                text(name), // elided with "…"
                text(QStringLiteral("4.8 MiB"), Qt::AlignRight | Qt::AlignVCenter),
                text(QStringLiteral("12 (3)"), Qt::AlignRight | Qt::AlignVCenter),
                text(QStringLiteral("1,234,567,890 B/s"), Qt::AlignRight | Qt::AlignVCenter), // elided
                text(kerned), // elided between a kerned pair
                text(QStringLiteral("Ελληνικά 日本語")), // in a fallback font
                text(QStringLiteral("Ελληνικά κείμενα")), // elided by Qt's layout
                text(QString()),
            };
        };
        const QList<int> widths{360, 90, 110, 110, 60, 47, 200, 50, 60};
        Row cheap(new TextCellDelegate, cells(), widths, selected);
        Row stock(new QStyledItemDelegate, cells(), widths, selected);
        for (int column = 0; column < widths.size(); ++column) {
            const QImage painted = cheap.cell(column);
            QVERIFY(!painted.isNull());
            QCOMPARE(hasInk(painted), column != widths.size() - 1);
            QVERIFY2(painted == stock.cell(column), qPrintable(QString::number(column)));
        }
    }

    void pairShaperPlacesTextAsQtDoes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("plain");
        QTest::newRow("kerned pairs") << QStringLiteral("AVATAR To Wé Ty.Vy «Ça» ‘y’ “z” – ∞") << true;
        QTest::newRow("a dotted name") << QStringLiteral("Some.Linux.Distribution.1234.x86_64.DVD.iso") << true;
        QTest::newRow("spaces") << QStringLiteral(" a  b ") << true;
        QTest::newRow("one character") << QStringLiteral("W") << true;
        QTest::newRow("a ligature") << QStringLiteral("office fifty") << false;
        QTest::newRow("another script") << QStringLiteral("Ελληνικά") << false;
        QTest::newRow("a fallback font") << QStringLiteral("Ubuntu 日本語") << false;
        QTest::newRow("a soft hyphen") << QStringLiteral("Ubun\u00adtu") << false;
    }

    // The same glyphs in the same places as Qt's own layout, and the elision QFontMetrics gives at
    // every width; texts it cannot place are left to that layout.
    void pairShaperPlacesTextAsQtDoes()
    {
        QFETCH(QString, text);
        QFETCH(bool, plain);
        const QFont font = QApplication::font();
        PairShaper shaper(font);
        const std::optional<PairShaper::Line> line = shaper.shape(text);
        QCOMPARE(line.has_value(), plain);
        const QFontMetrics metrics(font);
        for (int width = 0; width < metrics.horizontalAdvance(text) + 3; ++width) {
            const std::optional<QString> elided = shaper.elidedRight(text, width);
            QCOMPARE(elided.has_value(), plain);
            if (elided)
                QVERIFY2(*elided == metrics.elidedText(text, Qt::ElideRight, width), qPrintable(QString::number(width)));
        }
        if (!line)
            return;
        QStaticText reference(text);
        reference.setTextFormat(Qt::PlainText);
        reference.prepare(QTransform(), font);
        QCOMPARE(line->width, reference.size().width());
        QCOMPARE(shaper.lineHeight(), reference.size().height());
        QImage ours(qCeil(line->width) + 8, 40, QImage::Format_ARGB32_Premultiplied);
        QImage qts = ours;
        ours.fill(Qt::white);
        qts.fill(Qt::white);
        QPainter(&ours).drawGlyphRun(QPointF(3, 5), line->glyphs);
        QPainter painter(&qts);
        painter.setFont(font);
        painter.drawStaticText(QPointF(3, 5), reference);
        painter.end();
        QVERIFY(hasInk(ours) || text.trimmed().isEmpty());
        QVERIFY(ours == qts);
    }

    void progressBarsAreTheStyles_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("plain") << false;
        QTest::newRow("selected") << true;
    }

    // Drawn from the pixmap cache, each bar is still the style's for its own fraction and width: the
    // same fraction twice, then neighbours that differ by a tenth of a percent (the same body, filled
    // as far) or in width, and the ends.
    void progressBarsAreTheStyles()
    {
        QFETCH(bool, selected);
        const QList<double> fractions{0, 0.25, 0.25, 0.251, 0.5, 1, 0.5, 0.001, 0.999};
        const QList<int> widths{110, 110, 110, 110, 110, 110, 200, 110, 110};
        const auto cells = [&fractions] {
            QList<QStandardItem *> items;
            for (const double fraction : fractions)
                items << progress(fraction);
            return items;
        };
        auto *delegate = new ProgressCellDelegate;
        Row cheap(delegate, cells(), widths, selected);
        Row stock(new StyleProgressDelegate, cells(), widths, selected);
        for (int column = 0; column < fractions.size(); ++column)
            QVERIFY2(sameLook(cheap.cell(column), stock.cell(column)), qPrintable(QString::number(column)));
        QVERIFY(delegate->composesBars()); // Fusion's bars are their parts
        QVERIFY(cheap.cell(2) == cheap.cell(1));
        QVERIFY(cheap.cell(3) != cheap.cell(2));
    }

    void rowPanelsAreTheBaseStyles_data()
    {
        QTest::addColumn<QString>("style");
        QTest::addColumn<QBrush>("alternate");
        for (const QString &style : {QStringLiteral("Fusion"), QStringLiteral("Windows")}) {
            QLinearGradient gradient(0, 0, 80, 0);
            gradient.setColorAt(0, Qt::white);
            gradient.setColorAt(1, Qt::darkCyan);
            QTest::newRow(qPrintable(style + QStringLiteral(", flat"))) << style << QBrush(QColor(0xe0, 0xf0, 0xff));
            QTest::newRow(qPrintable(style + QStringLiteral(", translucent"))) << style << QBrush(QColor(0, 0, 200, 60));
            QTest::newRow(qPrintable(style + QStringLiteral(", gradient"))) << style << QBrush(gradient);
        }
    }

    // Rows plain, alternate and selected, in a view active and not, are the base style's pixels
    // whether the panel is drawn from what a probe learnt or by the base style itself.
    void rowPanelsAreTheBaseStyles()
    {
        QFETCH(QString, style);
        QFETCH(QBrush, alternate);
        QStandardItemModel model(7, 3);
        for (int row = 0; row < model.rowCount(); ++row)
            model.setItem(row, 0, new QStandardItem(QStringLiteral("Row %1").arg(row)));
        const auto view = [&model, &alternate](QStyle *drawing) {
            auto *table = new QTableView;
            drawing->setParent(table);
            table->setStyle(drawing);
            table->setModel(&model);
            table->setAlternatingRowColors(true);
            table->setShowGrid(false);
            QPalette palette = table->palette();
            palette.setBrush(QPalette::AlternateBase, alternate);
            table->setPalette(palette);
            table->selectRow(3);
            table->resize(400, 300);
            return table;
        };
        const std::unique_ptr<QTableView> probed(view(new RowPanelStyle(style)));
        const std::unique_ptr<QTableView> base(view(QStyleFactory::create(style)));
        for (const bool active : {false, true}) {
            if (active) {
                probed->show();
                base->show();
            }
            // Twice: the first paint probes, the second draws from what it learnt.
            for (int paint = 0; paint < 2; ++paint) {
                const QImage painted = probed->viewport()->grab().toImage();
                QVERIFY(hasInk(painted));
                QVERIFY(painted == base->viewport()->grab().toImage());
            }
        }
    }
};

QTEST_MAIN(TestTntCells)
#include "tst_tntcells.moc"
