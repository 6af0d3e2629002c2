#include "ui/RowPanelStyle.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QWidget>

#include <algorithm>

namespace {

// Wide enough for a style that shades a row's ends differently from its middle to show it.
constexpr QSize probeSize(96, 24);
// Palettes and kinds of row a view goes through; more means something churns, and they are probed
// again.
constexpr qsizetype panelsLimit = 64;

} // namespace

RowPanelStyle::RowPanelStyle(const QString &base)
    : QProxyStyle(base)
{}

RowPanelStyle::Panel RowPanelStyle::probe(const QStyleOptionViewItem &option, const QWidget *widget) const
{
    QImage image(probeSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QStyleOptionViewItem row(option);
    row.rect = QRect(QPoint(0, 0), probeSize);
    QPainter painter(&image);
    QProxyStyle::drawPrimitive(PE_PanelItemViewRow, &row, &painter, widget);
    painter.end();
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [first](QRgb pixel) { return pixel == first; }))
            return {Look::style, 0};
    }
    if (qAlpha(first) == 0)
        return {Look::nothing, 0};
    // A flat colour painted over nothing is only the same as one drawn over a cell when opaque.
    return qAlpha(first) == 255 ? Panel{Look::flat, first} : Panel{Look::style, 0};
}

void RowPanelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                  const QWidget *widget) const
{
    const auto *row = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    if (element != PE_PanelItemViewRow || !row || (row->state & State_Selected)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const quint64 kind = quint64(row->state.toInt()) << 32 | quint64(row->features.toInt()) << 1 |
                         quint64(widget && widget->isEnabled());
    if (m_panels.size() >= panelsLimit)
        m_panels.clear();
    auto known = m_panels.constFind({row->palette.cacheKey(), kind});
    if (known == m_panels.cend())
        known = m_panels.insert({row->palette.cacheKey(), kind}, probe(*row, widget));
    switch (known->look) {
    case Look::nothing: return;
    case Look::flat: painter->fillRect(row->rect, QColor::fromRgb(known->colour)); return;
    case Look::style: QProxyStyle::drawPrimitive(element, option, painter, widget); return;
    }
}
