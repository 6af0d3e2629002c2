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

// The progress column: the style's progress bar in the state's colour with the percentage on it,
// each distinct bar rendered by the style once and then drawn from the pixmap cache.
class ProgressCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
