#include "ui/RateGraph.h"

#include "model/RateHistory.h"
#include "ui/TntTableModel.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <limits>

const QColor RateGraph::downColour(0x1e, 0x88, 0xe5);
const QColor RateGraph::upColour(0x43, 0xa0, 0x47);
const QColor RateGraph::alternativeColour(0xff, 0x98, 0x00, 0x50);

namespace {

// A round top for the scale: 1, 2 or 5 times a power of ten, at least 1 KiB/s.
qint64 scaleTop(qint64 highest)
{
    qint64 step = 1024;
    for (;;) {
        for (const qint64 factor : {1, 2, 5}) {
            if (highest <= step * factor)
                return step * factor;
        }
        if (step > std::numeric_limits<qint64>::max() / 100)
            return highest;
        step *= 10;
    }
}

} // namespace

RateGraph::RateGraph(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("rateGraph"));
}

QSize RateGraph::sizeHint() const
{
    return {400, 160};
}

QSize RateGraph::minimumSizeHint() const
{
    return {120, 60};
}

void RateGraph::setHistory(RateHistory *history)
{
    if (m_history)
        disconnect(m_history, nullptr, this, nullptr);
    m_history = history;
    if (history)
        connect(history, &RateHistory::changed, this, qOverload<>(&QWidget::update));
    update();
}

void RateGraph::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    update();
}

void RateGraph::paint(QPainter &painter, const QRect &area, const RateHistory &history, Style style)
{
    const auto &samples = history.samples();
    if (samples.empty() || area.width() < 2 || area.height() < 2)
        return;
    const auto newest = samples.back().at;
    // A young history fills the width from a fifth of its span on, rather than hugging the right edge.
    const double full = std::chrono::duration<double>(history.span()).count();
    const double covered = std::chrono::duration<double>(newest - samples.front().at).count();
    const double span = std::clamp(covered, full / 5, full);
    const auto xOf = [&](RateHistory::Clock::time_point at) {
        const double age = std::chrono::duration<double>(newest - at).count();
        return area.right() + 1 - age / span * area.width();
    };
    qint64 highest = 0;
    for (const auto &sample : samples)
        highest = std::max({highest, sample.down, sample.up});
    const qint64 top = scaleTop(highest);
    const auto yOf = [&](qint64 rate) {
        // Centred on the pixel rows, so that neither 0 nor the top is half cut off.
        return area.bottom() + 0.5 - static_cast<double>(rate) / static_cast<double>(top) * (area.height() - 1);
    };

    // A stretch is shaded from a sample taken with the limits on to the next sample.
    for (std::size_t at = 0; at + 1 < samples.size(); ++at) {
        if (samples[at].alternative) {
            painter.fillRect(QRectF(QPointF(xOf(samples[at].at), area.top()),
                                    QPointF(xOf(samples[at + 1].at), area.bottom() + 1)),
                             alternativeColour);
        }
    }
    const auto line = [&](qint64 RateHistory::Sample::*rate, const QColor &colour) {
        QPainterPath path;
        path.moveTo(xOf(samples.front().at), yOf(samples.front().*rate));
        for (const auto &sample : samples)
            path.lineTo(xOf(sample.at), yOf(sample.*rate));
        painter.setPen(QPen(colour, style == Style::full ? 2 : 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(path);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    line(&RateHistory::Sample::down, downColour);
    line(&RateHistory::Sample::up, upColour);
    painter.restore();

    if (style == Style::sparkline)
        return;
    const QFontMetrics metrics = painter.fontMetrics();
    const int margin = 4;
    painter.setPen(downColour);
    painter.drawText(area.left() + margin, area.top() + margin + metrics.ascent(),
                     QStringLiteral("▼ ") + TntFormat::rateOrZero(samples.back().down));
    painter.setPen(upColour);
    painter.drawText(area.left() + margin, area.top() + margin + metrics.height() + metrics.ascent(),
                     QStringLiteral("▲ ") + TntFormat::rateOrZero(samples.back().up));
    const QString scale = TntFormat::rate(top);
    painter.setPen(QPalette().color(QPalette::PlaceholderText));
    painter.drawText(area.right() - margin - metrics.horizontalAdvance(scale), area.top() + margin + metrics.ascent(), scale);
}

QImage RateGraph::sparkline(const RateHistory &history, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter, image.rect(), history, Style::sparkline);
    return image;
}

void RateGraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const QRect area = rect().adjusted(1, 1, -1, -1);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    // Guides at a quarter, half and three quarters of the scale.
    painter.setPen(QPen(palette().color(QPalette::Midlight), 1, Qt::DotLine));
    for (int quarter = 1; quarter < 4; ++quarter) {
        const int y = area.top() + area.height() * quarter / 4;
        painter.drawLine(area.left(), y, area.right(), y);
    }
    if (m_history && !m_history->samples().empty()) {
        paint(painter, area, *m_history, Style::full);
        return;
    }
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(area, Qt::AlignCenter, m_placeholder);
}
