#pragma once

#include "ui/PairShaper.h"

#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

#include <variant>

// Cells of a large table painted for a fraction of QStyledItemDelegate's cost: its paint lays out
// and shapes a cell's text several times (to size it, to elide it, to draw it), most of a screen's
// paint at 10,000 rows. Here a text is laid out once, by the pair shaper where it can be and into
// a QStaticText where not, kept for the next paint (a table repaints mostly the texts it has just
// shown: sizes, states, dates, the same names after a sort or a scroll back), measured by it and
// elided with "…" only when wider than its cell; in the style's colours, margins and selection. A
// cell that needs more than plain text (the focus frame, a selection the style draws around the
// text only) is the base class's to paint.
class TextCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    struct Shaped
    {
        std::variant<QGlyphRun, QStaticText> lines;
        QSizeF size;
    };
    const Shaped &shaped(const QString &text, const QStyleOptionViewItem &option, int width) const;
    Shaped shape(const QString &text) const;

    // By text, and by text and width for an elided one; dropped whole when full or the font changes.
    mutable QHash<QString, Shaped> m_texts;
    mutable QHash<std::pair<QString, int>, Shaped> m_elided;
    mutable PairShaper m_shaper;
};

// The progress column: the style's progress bar in the state's colour with the percentage on it.
// A bar is drawn from two kept pixmaps: its body, the same for every fraction that fills as many
// pixels, and its label, text alone; so a screen of new fractions renders labels (two texts) but
// few bodies (rounded, shaded outlines: most of a new bar's cost). Whether the style's whole bar
// is that body under that label is checked once per look; where not, whole bars are kept instead.
class ProgressCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    // Whether the bars of the last paint were composed of parts, or kept whole.
    bool composesBars() const { return m_composes; }

private:
    // What every bar of a paint shares; the kept pixmaps are dropped when it changes.
    struct Look
    {
        QSize size;
        qreal ratio = 0;
        qint64 palette = 0;
        const QStyle *style = nullptr;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        QFont font;
        bool operator==(const Look &) const = default;
    };
    enum class Part { whole, body, label };
    // Which part a key stands for is the hash it is in, and for labels and whole bars the look.
    struct Key
    {
        int progress;
        int state;
        QRgb colour;
        QString text;
        bool operator==(const Key &) const = default;
        friend size_t qHash(const Key &key, size_t seed = 0)
        {
            return qHashMulti(seed, key.progress, key.state, key.colour, key.text);
        }
    };

    const QPixmap &kept(Part part, const QStyleOptionProgressBar &bar) const;
    QPixmap render(Part part, const QStyleOptionProgressBar &bar) const;
    // The lowest progress that fills as many of the contents' pixels as `progress` does.
    int bodyProgress(int progress) const;
    bool composesLikeTheStyle(const QStyleOptionProgressBar &bar) const;

    mutable Look m_look;
    mutable bool m_composes = false;
    mutable int m_contentsWidth = 0;
    mutable QHash<Key, QPixmap> m_kept; // labels, or whole bars
    mutable QHash<Key, QPixmap> m_bodies;
};
