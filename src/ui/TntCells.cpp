#include "ui/TntCells.h"

#include "model/TntModel.h"
#include "ui/TntTableModel.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QtMath>

namespace {

QPalette::ColorGroup colourGroup(QStyle::State state)
{
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
}

QColor barColour(TntModel::State state, const QPalette &palette)
{
    using S = TntModel::State;
    if (TntModel::matches(state, S::error))
        return QColor(0xc0, 0x39, 0x2b);
    if (TntModel::matches(state, S::stopped) || TntModel::matches(state, S::complited))
        return palette.color(QPalette::Disabled, QPalette::Highlight);
    if (TntModel::matches(state, S::uploading) || state == S::stalledUP || state == S::queuedUP)
        return QColor(0x27, 0xae, 0x60);
    return palette.color(QPalette::Highlight);
}

// Enough for several screens of a wide table; a texts' cache of 10,000 rows would outgrow its use.
constexpr qsizetype shapedLimit = 4096;

} // namespace

TextCellDelegate::Shaped TextCellDelegate::shape(const QString &text) const
{
    if (std::optional<PairShaper::Line> line = m_shaper.shape(text))
        return {std::move(line->glyphs), QSizeF(line->width, m_shaper.lineHeight())};
    QStaticText result(text);
    result.setTextFormat(Qt::PlainText);
    result.prepare(QTransform(), m_shaper.font());
    const QSizeF size = result.size();
    return {std::move(result), size};
}

const TextCellDelegate::Shaped &TextCellDelegate::shaped(const QString &text, const QStyleOptionViewItem &option,
                                                         int width) const
{
    if (option.font != m_shaper.font() || m_texts.size() >= shapedLimit || m_elided.size() >= shapedLimit) {
        m_texts.clear();
        m_elided.clear();
        if (option.font != m_shaper.font())
            m_shaper = PairShaper(option.font);
    }
    auto whole = m_texts.constFind(text);
    if (whole == m_texts.cend())
        whole = m_texts.insert(text, shape(text));
    if (whole->size.width() <= width)
        return *whole;
    auto elided = m_elided.constFind({text, width});
    if (elided == m_elided.cend()) {
        std::optional<QString> cut;
        if (option.textElideMode == Qt::ElideRight)
            cut = m_shaper.elidedRight(text, width);
        elided = m_elided.insert({text, width},
                                 shape(cut ? *cut : option.fontMetrics.elidedText(text, option.textElideMode, width)));
    }
    return *elided;
}

void TextCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : QApplication::style();
    const bool selected = option.state & QStyle::State_Selected;
    if ((option.state & QStyle::State_HasFocus) ||
        (selected && !style->styleHint(QStyle::SH_ItemView_ShowDecorationSelected, &option, widget))) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // A cell neither selected, hovered nor given a background has no panel, and Fusion works out its
    // frame colours on every call before it finds that out: a call per cell on every paint.
    if ((option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) ||
        option.backgroundBrush.style() != Qt::NoBrush)
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, widget);

    const QString text = index.data(Qt::DisplayRole).toString();
    if (text.isEmpty())
        return;
    // The margins and placement QCommonStyle gives an item's text.
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const QRect textRect = option.rect.adjusted(margin, 0, -margin, 0);
    const Shaped &shown = shaped(text, option, textRect.width());
    const QVariant aligned = index.data(Qt::TextAlignmentRole);
    const auto alignment = aligned.isValid() ? Qt::Alignment(aligned.toInt()) : option.displayAlignment;
    // Horizontally where QTextLayout aligns a line, vertically where QCommonStyle puts its layout.
    const QSizeF size = shown.size;
    const Qt::Alignment visual = QStyle::visualAlignment(option.direction, alignment);
    qreal x = textRect.x();
    if (visual & Qt::AlignRight)
        x += textRect.width() - size.width();
    else if (visual & Qt::AlignHCenter)
        x += (textRect.width() - size.width()) / 2;
    const int y = QStyle::alignedRect(option.direction, alignment & Qt::AlignVertical_Mask,
                                      QSize(textRect.width(), qCeil(size.height())), textRect)
                      .y();
    const QPen pen = painter->pen();
    painter->setPen(
        option.palette.color(colourGroup(option.state), selected ? QPalette::HighlightedText : QPalette::Text));
    if (const auto *glyphs = std::get_if<QGlyphRun>(&shown.lines)) {
        painter->drawGlyphRun(QPointF(x, y), *glyphs); // in the font it holds
    } else {
        // A static text drawn in another font than it was shaped for is shaped again.
        const QFont font = painter->font();
        painter->setFont(option.font);
        painter->drawStaticText(QPointF(x, y), std::get<QStaticText>(shown.lines));
        painter->setFont(font);
    }
    painter->setPen(pen);
}

void ProgressCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionProgressBar bar;
    // The pixmap holds the whole cell: at 0% Fusion draws a line left of the bar.
    const QRect cell(QPoint(0, 0), option.rect.size());
    bar.rect = cell.adjusted(2, 3, -2, -3);
    if (bar.rect.isEmpty())
        return;
    bar.minimum = 0;
    bar.maximum = 1000;
    bar.progress = static_cast<int>(index.data(TntTableModel::ProgressRole).toDouble() * 1000);
    bar.text = index.data(Qt::DisplayRole).toString();
    bar.textVisible = true;
    bar.state = option.state | QStyle::State_Horizontal;
    bar.direction = option.direction;
    bar.fontMetrics = option.fontMetrics;
    bar.palette = option.palette;
    const auto state = static_cast<TntModel::State>(index.data(TntTableModel::StateRole).toInt());
    bar.palette.setColor(QPalette::Highlight, barColour(state, option.palette));
    QStyle *style = QApplication::style();
    const qreal ratio = painter->device()->devicePixelRatioF();

    // Everything the style's drawing reads is in the key.
    const QString key =
        QLatin1String("quillo-progress:") + QString::number(cell.width()) + u'x' + QString::number(cell.height()) +
        u'@' + QString::number(ratio) + u':' + QString::number(bar.progress) + u':' + QString::number(uint(bar.state)) +
        u':' + QString::number(option.palette.cacheKey()) + u':' +
        QString::number(bar.palette.color(QPalette::Highlight).rgba()) + u':' + QString::number(quintptr(style)) +
        u':' + QString::number(option.direction) + u':' + option.font.key() + u':' + bar.text;
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap(cell.size() * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter onPixmap(&pixmap);
        onPixmap.setFont(option.font);
        style->drawControl(QStyle::CE_ProgressBar, &bar, &onPixmap);
        onPixmap.end();
        QPixmapCache::insert(key, pixmap);
    }
    painter->drawPixmap(option.rect.topLeft(), pixmap);
}
