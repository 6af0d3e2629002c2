#include "ui/PiecesBar.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

PiecesBar::PiecesBar(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("piecesBar"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PiecesBar::sizeHint() const
{
    return {200, fontMetrics().height()};
}

QSize PiecesBar::minimumSizeHint() const
{
    return {20, fontMetrics().height()};
}

void PiecesBar::setStates(QList<API::PieceState> states)
{
    if (states == m_states)
        return;
    m_states = std::move(states);
    m_row = QImage();
    update();
}

QColor PiecesBar::colour(API::PieceState state) const
{
    switch (state) {
    case API::PieceState::missing: return palette().color(QPalette::Base);
    case API::PieceState::downloading: return QColor(0x4c, 0xaf, 0x50);
    case API::PieceState::have: return palette().color(QPalette::Highlight);
    }
    Q_UNREACHABLE();
}

void PiecesBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        m_row = QImage();
}

QImage PiecesBar::row(const QList<API::PieceState> &states, int width, const QColor (&colours)[3])
{
    QImage image(std::max(width, 1), 1, QImage::Format_RGB32);
    image.fill(colours[0]);
    const auto count = static_cast<double>(states.size());
    if (states.isEmpty())
        return image;
    // Column x covers the pieces from x·n/w to (x+1)·n/w; each piece counts by the part of it inside.
    const double perColumn = count / image.width();
    auto *line = reinterpret_cast<QRgb *>(image.scanLine(0));
    for (int x = 0; x < image.width(); ++x) {
        const double from = x * perColumn;
        const double to = std::min(count, from + perColumn);
        double red = 0, green = 0, blue = 0;
        for (auto piece = static_cast<qsizetype>(from); piece < states.size() && static_cast<double>(piece) < to; ++piece) {
            const auto at = static_cast<double>(piece);
            const double share = std::min(to, at + 1) - std::max(from, at);
            const QColor &shade = colours[static_cast<int>(states[piece])];
            red += share * shade.red();
            green += share * shade.green();
            blue += share * shade.blue();
        }
        const auto channel = [perColumn](double sum) { return std::clamp(static_cast<int>(std::lround(sum / perColumn)), 0, 255); };
        line[x] = qRgb(channel(red), channel(green), channel(blue));
    }
    return image;
}

void PiecesBar::paintEvent(QPaintEvent *)
{
    const qreal ratio = devicePixelRatioF();
    const int width = static_cast<int>(std::lround((this->width() - 2) * ratio));
    if (m_row.isNull() || m_row.width() != width) {
        const QColor colours[3] = {colour(API::PieceState::missing), colour(API::PieceState::downloading),
                                   colour(API::PieceState::have)};
        m_row = row(m_states, width, colours);
    }
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.drawImage(rect().adjusted(1, 1, -1, -1), m_row);
}
