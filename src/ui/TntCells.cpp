#include "ui/TntCells.h"

#include "model/TntModel.h"
#include "ui/TntTableModel.h"

#include <QApplication>
#include <QPainter>
#include <QtMath>

#include <cstdlib>

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

int ProgressCellDelegate::bodyProgress(int progress) const
{
    // As styles work out the filled width: steps times width over the steps, rounded down.
    const qint64 width = qMax(1, m_contentsWidth);
    const qint64 filled = qint64(progress) * width / 1000;
    const qint64 lowest = (filled * 1000 + width - 1) / width;
    return int(progress > 0 ? qMax<qint64>(lowest, 1) : 0); // some styles draw nothing at 0 only
}

QPixmap ProgressCellDelegate::render(Part part, const QStyleOptionProgressBar &bar) const
{
    QPixmap pixmap(m_look.size * m_look.ratio);
    pixmap.setDevicePixelRatio(m_look.ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setFont(m_look.font);
    QStyle *style = const_cast<QStyle *>(m_look.style);
    QStyleOptionProgressBar sub = bar;
    // As QCommonStyle composes a bar of its parts.
    switch (part) {
    case Part::whole: style->drawControl(QStyle::CE_ProgressBar, &bar, &painter); break;
    case Part::body:
        // Without its text the common style does not measure it for room beside the bar; checked to
        // make no difference with the style's whole bars.
        sub.textVisible = false;
        sub.rect = style->subElementRect(QStyle::SE_ProgressBarGroove, &sub);
        style->drawControl(QStyle::CE_ProgressBarGroove, &sub, &painter);
        sub.rect = style->subElementRect(QStyle::SE_ProgressBarContents, &sub);
        style->drawControl(QStyle::CE_ProgressBarContents, &sub, &painter);
        break;
    case Part::label:
        sub.rect = style->subElementRect(QStyle::SE_ProgressBarLabel, &bar);
        style->drawControl(QStyle::CE_ProgressBarLabel, &sub, &painter);
        break;
    }
    return pixmap;
}

const QPixmap &ProgressCellDelegate::kept(Part part, const QStyleOptionProgressBar &bar) const
{
    const int progress = part == Part::body ? bodyProgress(bar.progress) : bar.progress;
    const Key key{progress, int(bar.state), bar.palette.color(QPalette::Highlight).rgba(),
                  part == Part::body ? QString() : bar.text};
    QHash<Key, QPixmap> &kept = part == Part::body ? m_bodies : m_kept;
    auto found = kept.constFind(key);
    if (found == kept.cend()) {
        QStyleOptionProgressBar drawn = bar;
        drawn.progress = progress;
        found = kept.insert(key, render(part, drawn));
    }
    return *found;
}

bool ProgressCellDelegate::composesLikeTheStyle(const QStyleOptionProgressBar &bar) const
{
    // Nearly empty, in between, full: each whole bar against its label over the body of the lowest
    // progress filling as much, equal but for the rounding of blending the text in two steps.
    for (const int progress : {3, 437, 1000}) {
        QStyleOptionProgressBar probe = bar;
        probe.progress = progress;
        probe.text = QString::number(progress / 10.0, 'f', 1) + u'%';
        QStyleOptionProgressBar body = probe;
        body.progress = bodyProgress(progress);
        QImage composed = render(Part::body, body).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&composed);
        painter.drawPixmap(0, 0, render(Part::label, probe));
        painter.end();
        const QImage whole = render(Part::whole, probe).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (whole.size() != composed.size())
            return false;
        for (int y = 0; y < whole.height(); ++y) {
            const auto *a = reinterpret_cast<const QRgb *>(whole.constScanLine(y));
            const auto *b = reinterpret_cast<const QRgb *>(composed.constScanLine(y));
            for (int x = 0; x < whole.width(); ++x) {
                if (std::abs(qRed(a[x]) - qRed(b[x])) > 2 || std::abs(qGreen(a[x]) - qGreen(b[x])) > 2 ||
                    std::abs(qBlue(a[x]) - qBlue(b[x])) > 2 || std::abs(qAlpha(a[x]) - qAlpha(b[x])) > 2)
                    return false;
            }
        }
    }
    return true;
}

void ProgressCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionProgressBar bar;
    // The pixmaps hold the whole cell: at 0% Fusion draws a line left of the bar.
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

    const Look look{cell.size(), painter->device()->devicePixelRatioF(), option.palette.cacheKey(),
                    QApplication::style(), option.direction, option.font};
    // Fifteen screens or so of distinct labels in 2 MiB; bodies are at most a few hundred, a few per
    // pixel of width.
    const qsizetype limit =
        qMax(qsizetype(64), qsizetype(2 << 20) / qMax(1, int(cell.width() * cell.height() * look.ratio * look.ratio * 4)));
    if (!(look == m_look)) {
        m_kept.clear();
        m_bodies.clear();
        m_look = look;
        m_contentsWidth = look.style->subElementRect(QStyle::SE_ProgressBarContents, &bar).width();
        m_composes = composesLikeTheStyle(bar);
    } else if (m_kept.size() >= limit) {
        m_kept.clear();
    }
    if (!m_composes) {
        painter->drawPixmap(option.rect.topLeft(), kept(Part::whole, bar));
        return;
    }
    painter->drawPixmap(option.rect.topLeft(), kept(Part::body, bar));
    painter->drawPixmap(option.rect.topLeft(), kept(Part::label, bar));
}
