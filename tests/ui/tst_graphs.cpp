#include "model/AnswerPace.h"
#include "model/GlobalTransferInfo.h"
#include "model/RateHistory.h"
#include "settings/UserDefaults.h"
#include "ui/PiecesBar.h"
#include "ui/RateGraph.h"
#include "ui/TransferStatus.h"

#include <QLabel>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

using Positions = QList<int>;

namespace {

using State = API::PieceState;

// "20" × 3 is have, missing, have, missing, have, missing.
QList<State> states(const QString &pattern, int repeat)
{
    QList<State> out;
    for (int round = 0; round < repeat; ++round) {
        for (const QChar digit : pattern)
            out << static_cast<State>(digit.digitValue());
    }
    return out;
}

QColor mixOf(const PiecesBar &bar, const QString &mix)
{
    double red = 0, green = 0, blue = 0;
    for (const QChar digit : mix) {
        const QColor shade = bar.colour(static_cast<State>(digit.digitValue()));
        red += shade.red();
        green += shade.green();
        blue += shade.blue();
    }
    const auto n = static_cast<double>(mix.size());
    return QColor(qRound(red / n), qRound(green / n), qRound(blue / n));
}

bool near(const QColor &a, const QColor &b, int tolerance = 3)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

QStringList mixes(const char *spaced)
{
    return QString::fromLatin1(spaced).split(u' ');
}

QString describe(const QColor &colour)
{
    return colour.name();
}

// Samples every ten seconds over a minute; `alternative` says, per sample, whether the limits were on.
void fill(RateHistory &history, const QString &alternative, qint64 down, qint64 up)
{
    const auto start = RateHistory::Clock::time_point{};
    for (qsizetype at = 0; at < alternative.size(); ++at)
        history.add({start + std::chrono::seconds(10 * at), down, up, alternative[at] == u'1'});
}

// A status bar over models of its own.
struct StatusBar
{
    QTemporaryDir dir;
    UserDefaults defaults{dir.filePath(QStringLiteral("Quillo.ini"))};
    GlobalTransferInfo transfer;
    RateHistory history{std::chrono::seconds(30)};
    AnswerPace pace;
    TransferStatus status{transfer, history, pace, defaults};
};

} // namespace

// The pieces bar and the rate graphs drawn offscreen: colours where they belong, not golden files.
class TestGraphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void piecesBar_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<int>("repeat");
        QTest::addColumn<int>("width");
        QTest::addColumn<Positions>("positions");
        QTest::addColumn<QStringList>("mixes"); // per position, the states whose colours mix there
        QTest::newRow("half held") << QString(50, u'2') + QString(50, u'0') << 1 << 100 << Positions{5, 45, 55, 95}
                                   << mixes("2 2 0 0");
        QTest::newRow("many pieces per pixel mix") << QStringLiteral("20") << 500 << 10 << Positions{0, 5, 9}
                                                   << mixes("20 20 20");
        QTest::newRow("a quarter downloading") << QStringLiteral("1222") << 1000 << 50 << Positions{0, 25, 49}
                                               << mixes("1222 1222 1222");
        QTest::newRow("fewer pieces than pixels") << QStringLiteral("2012") << 1 << 40 << Positions{2, 17, 25, 38}
                                                  << mixes("2 0 1 2");
        QTest::newRow("a piece split across a pixel") << QStringLiteral("20") << 1 << 3 << Positions{0, 1, 2}
                                                      << mixes("2 20 0");
        QTest::newRow("no pieces is all missing") << QString() << 0 << 30 << Positions{0, 29} << mixes("0 0");
        QTest::newRow("a million pieces") << QString(9, u'2') + u'0' << 100'000 << 200 << Positions{0, 100, 199}
                                          << mixes("2222222220 2222222220 2222222220");
    }

    void piecesBar()
    {
        QFETCH(QString, pattern);
        QFETCH(int, repeat);
        QFETCH(int, width);
        QFETCH(Positions, positions);
        QFETCH(QStringList, mixes);
        PiecesBar bar;
        bar.resize(width + 2, 12); // inside a one-pixel frame
        bar.setStates(states(pattern, repeat));
        const QImage image = bar.grab().toImage();
        QCOMPARE(image.width(), width + 2);
        for (qsizetype at = 0; at < positions.size(); ++at) {
            const QColor drawn = image.pixelColor(positions[at] + 1, 6);
            const QColor expected = mixOf(bar, mixes[at]);
            QVERIFY2(near(drawn, expected), qPrintable(QStringLiteral("x %1: %2, expected %3")
                                                           .arg(positions[at])
                                                           .arg(describe(drawn), describe(expected))));
        }
    }

    void piecesBarFollowsNewStates()
    {
        PiecesBar bar;
        bar.resize(22, 12);
        bar.setStates(states(QStringLiteral("0"), 20));
        QVERIFY(near(bar.grab().toImage().pixelColor(5, 6), bar.colour(State::missing)));
        bar.setStates(states(QStringLiteral("2"), 20));
        QVERIFY(near(bar.grab().toImage().pixelColor(5, 6), bar.colour(State::have)));
    }

    // Six samples ten seconds apart over a 50-second span drawn 300 pixels wide: sample i sits at
    // x = 60·i, and a stretch from a sample with the limits on to the next one is shaded.
    void alternativeLimitsShaded_data()
    {
        QTest::addColumn<QString>("alternative");
        QTest::addColumn<Positions>("shaded");
        QTest::addColumn<Positions>("plain");
        QTest::newRow("in the middle") << QStringLiteral("001100") << Positions{130, 170, 230} << Positions{30, 90, 270};
        QTest::newRow("from the start") << QStringLiteral("100000") << Positions{10, 50} << Positions{90, 290};
        QTest::newRow("never") << QStringLiteral("000000") << Positions{} << Positions{10, 150, 290};
        QTest::newRow("only the newest sample") << QStringLiteral("000001") << Positions{} << Positions{150, 290};
        QTest::newRow("all along") << QStringLiteral("111111") << Positions{5, 150, 295} << Positions{};
    }

    void alternativeLimitsShaded()
    {
        QFETCH(QString, alternative);
        QFETCH(Positions, shaded);
        QFETCH(Positions, plain);
        RateHistory history{std::chrono::seconds(50)};
        fill(history, alternative, 512, 1024);
        const QImage image = RateGraph::sparkline(history, QSize(300, 100));
        const int y = 75; // below both lines
        for (const int x : shaded)
            QVERIFY2(near(image.pixelColor(x, y), RateGraph::alternativeColour, 2), qPrintable(QString::number(x)));
        for (const int x : plain)
            QCOMPARE(image.pixelColor(x, y).alpha(), 0);
    }

    // Download at half the scale, upload at its top: each line at its height, in its colour.
    void linesAtTheirRates()
    {
        RateHistory history{std::chrono::seconds(50)};
        fill(history, QStringLiteral("000000"), 512, 1024);
        const QImage image = RateGraph::sparkline(history, QSize(300, 101));
        const auto lineAt = [&image](int x, const QColor &colour) {
            for (int y = 0; y < image.height(); ++y) {
                const QColor drawn = image.pixelColor(x, y);
                if (drawn.alpha() > 100 && near(drawn, colour, 8))
                    return y;
            }
            return -1;
        };
        for (const int x : {40, 150, 260}) {
            QVERIFY(std::abs(lineAt(x, RateGraph::downColour) - 50) <= 1);
            QVERIFY(lineAt(x, RateGraph::upColour) <= 1);
        }
    }

    // The status bar's rate tooltips carry the sparkline as an image Qt's rich text can show.
    void rateToolTipShowsTheSparkline()
    {
        StatusBar bar;
        TransferStatus &status = bar.status;
        QCOMPARE(status.rateToolTip(true), QStringLiteral("Global upload limit"));

        fill(bar.history, QStringLiteral("0110"), 2048, 0);
        const QString tip = status.rateToolTip(false);
        QVERIFY(tip.contains(QStringLiteral("Global download limit")));
        const QRegularExpressionMatch source = QRegularExpression(QStringLiteral("src='([^']+)'")).match(tip);
        QVERIFY(source.hasMatch());
        QTextDocument document;
        document.setHtml(tip);
        const QImage shown = document.resource(QTextDocument::ImageResource, QUrl(source.captured(1))).value<QImage>();
        QVERIFY(!shown.isNull());
        QVERIFY(near(shown.pixelColor(shown.width() / 2, shown.height() / 2), RateGraph::alternativeColour, 2));
    }

    // The connection's tooltip tells how long the server took to answer, once it has answered.
    void connectionToolTipShowsTheAnswerTime()
    {
        StatusBar bar;
        QLabel *connection = nullptr;
        for (QLabel *label : bar.status.findChildren<QLabel *>())
            connection = label->text().startsWith(QStringLiteral("Connection status")) ? label : connection;
        QVERIFY(connection);
        QCOMPARE(connection->toolTip(), QString());
        bar.pace.record(std::chrono::milliseconds(1200));
        bar.pace.record(std::chrono::milliseconds(400));
        QCOMPARE(connection->toolTip(), QStringLiteral("The server answered the last update in 400 ms (recently %1 ms).")
                                            .arg(QLocale().toString(1000)));
    }
};

QTEST_MAIN(TestGraphs)
#include "tst_graphs.moc"
