#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QString>

#include <optional>

// Lays out a line of Latin text without HarfBuzz, for the table's cells: a cell of never-shown
// text cost a full shaping (itemizing, line breaking, the font's lookups), about 8 µs for a name,
// where the glyphs of its characters and the kerning of its pairs cost a tenth of that. Both are
// asked of Qt's own layout once, per character and per pair, so a text comes out placed as Qt
// places it. A text with a character outside the plain scripts, one the font lacks (a fallback
// font's) or a pair that shapes into anything but its own two glyphs (a ligature) is not shaped
// here: it needs the full layout.
class PairShaper
{
public:
    explicit PairShaper(const QFont &font = {});

    const QFont &font() const { return m_font; }
    // The height of a line, as QStaticText gives it.
    qreal lineHeight() const { return m_lineHeight; }

    struct Line
    {
        QGlyphRun glyphs; // from the top left, as QStaticText is drawn
        qreal width = 0;
    };
    std::optional<Line> shape(QStringView text);
    // What QFontMetrics::elidedText(text, Qt::ElideRight, width) gives, when every pair it measures
    // is one this shaper places.
    std::optional<QString> elidedRight(QStringView text, int width);

private:
    struct Glyph
    {
        quint32 index = 0;
        qreal advance = 0; // at the end of a line
        bool plain = false;
    };
    const Glyph &glyph(char16_t c);
    // The advance of `first` followed by `second`, kerning included.
    std::optional<qreal> advanceBefore(char16_t first, char16_t second);
    qreal advanceAt(QStringView text, qsizetype i, bool &plain);

    QFont m_font;
    QRawFont m_face;
    qreal m_ascent = 0;
    qreal m_lineHeight = 0;
    QHash<char16_t, Glyph> m_glyphs;
    QHash<quint32, qreal> m_pairs; // NaN: a pair the full layout must place
};
