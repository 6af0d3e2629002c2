#include "ui/PairShaper.h"

#include <QTextLayout>

#include <cmath>

namespace {

// Scripts whose text HarfBuzz only kerns: Latin with its accented letters, and the punctuation of
// names, sizes and rates. Not U+00AD, the soft hyphen, which layout hides.
bool isPlain(char16_t c)
{
    if (c >= 0x20 && c < 0x7f)
        return true;
    if (c >= 0xa0 && c < 0x250)
        return c != 0xad;
    switch (c) {
    case 0x2013: // – —
    case 0x2014:
    case 0x2018: // ‘ ’ “ ”
    case 0x2019:
    case 0x201c:
    case 0x201d:
    case 0x2026: // …
    case 0x221e: // ∞
        return true;
    default:
        return false;
    }
}

constexpr char16_t ellipsis = 0x2026;
// Far more pairs than a language's text holds; a bound against texts made of everything.
constexpr qsizetype pairLimit = 1 << 16;

} // namespace

PairShaper::PairShaper(const QFont &font)
    : m_font(font)
    , m_face(QRawFont::fromFont(font))
{
}

const PairShaper::Glyph &PairShaper::glyph(char16_t c)
{
    auto known = m_glyphs.constFind(c);
    if (known != m_glyphs.cend())
        return *known;
    Glyph result;
    if (isPlain(c)) {
        QTextLayout layout(QString(QChar(c)), m_font);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        layout.endLayout();
        const QList<QGlyphRun> runs = layout.glyphRuns();
        if (runs.size() == 1 && runs.front().glyphIndexes().size() == 1 && runs.front().rawFont() == m_face) {
            result.index = runs.front().glyphIndexes().front();
            result.advance = line.horizontalAdvance();
            result.plain = result.index != 0;
            m_ascent = runs.front().positions().front().y();
            m_lineHeight = line.height();
        }
    }
    return *m_glyphs.insert(c, result);
}

std::optional<qreal> PairShaper::advanceBefore(char16_t first, char16_t second)
{
    const quint32 key = (quint32(first) << 16) | second;
    auto known = m_pairs.constFind(key);
    if (known == m_pairs.cend()) {
        qreal advance = NAN;
        const QChar pair[2] = {QChar(first), QChar(second)};
        QTextLayout layout(QString(pair, 2), m_font);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const QList<QGlyphRun> runs = layout.glyphRuns();
        if (runs.size() == 1 && runs.front().rawFont() == m_face &&
            runs.front().glyphIndexes() == QList<quint32>{glyph(first).index, glyph(second).index})
            advance = runs.front().positions().at(1).x() - runs.front().positions().at(0).x();
        if (m_pairs.size() >= pairLimit)
            m_pairs.clear();
        known = m_pairs.insert(key, advance);
    }
    if (std::isnan(*known))
        return std::nullopt;
    return *known;
}

qreal PairShaper::advanceAt(QStringView text, qsizetype i, bool &plain)
{
    const char16_t c = text[i].unicode();
    if (i + 1 == text.size())
        return glyph(c).advance;
    const std::optional<qreal> advance = advanceBefore(c, text[i + 1].unicode());
    plain = plain && advance.has_value();
    return advance.value_or(0);
}

std::optional<PairShaper::Line> PairShaper::shape(QStringView text)
{
    QList<quint32> indexes;
    QList<QPointF> positions;
    indexes.reserve(text.size());
    positions.reserve(text.size());
    qreal x = 0;
    bool plain = true;
    for (qsizetype i = 0; i < text.size() && plain; ++i) {
        const Glyph &shown = glyph(text[i].unicode());
        if (!shown.plain)
            return std::nullopt;
        indexes.push_back(shown.index);
        positions.push_back(QPointF(x, m_ascent));
        x += advanceAt(text, i, plain);
    }
    if (!plain || text.isEmpty())
        return std::nullopt;
    Line line;
    line.glyphs.setRawFont(m_face);
    line.glyphs.setGlyphIndexes(indexes);
    line.glyphs.setPositions(positions);
    line.width = x;
    return line;
}

// QTextEngine's elision, on the advances the text has within itself: a text of one character
// stays whole, and nothing is left where even the ellipsis does not fit.
std::optional<QString> PairShaper::elidedRight(QStringView text, int width)
{
    const Glyph &dots = glyph(ellipsis);
    bool plain = dots.plain;
    qreal total = 0;
    for (qsizetype i = 0; i < text.size() && plain; ++i) {
        plain = glyph(text[i].unicode()).plain;
        total += advanceAt(text, i, plain);
    }
    if (!plain)
        return std::nullopt;
    if (total <= width || text.size() <= 1)
        return text.toString();
    const qreal available = width - dots.advance;
    if (available < 0)
        return QString();
    qsizetype kept = 0;
    qreal current = 0;
    for (qsizetype next = 0;;) {
        kept = next++;
        current += advanceAt(text, kept, plain);
        if (next >= text.size() || current >= available)
            break;
    }
    return text.first(kept).toString() + QChar(ellipsis);
}
