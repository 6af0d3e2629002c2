#pragma once

#include <QPointer>
#include <QWidget>

class QPainter;
class RateHistory;

// The download and upload rates of a RateHistory as two lines, newest at the right, over its span
// (or the time it covers, from a fifth of the span on), with the stretches where the alternative
// speed limits were on shaded. The full graph names its lines, current rates and scale; the
// sparkline (a status-bar tooltip) is the lines and shading alone.
class RateGraph : public QWidget
{
    Q_OBJECT

public:
    enum class Style { full, sparkline };

    static const QColor downColour;
    static const QColor upColour;
    static const QColor alternativeColour;

    explicit RateGraph(QWidget *parent = nullptr);

    // Follows `history` (none: an empty graph); the history must outlive the graph or be unset first.
    void setHistory(RateHistory *history);
    // Said over an empty graph.
    void setPlaceholder(const QString &text);

    static void paint(QPainter &painter, const QRect &area, const RateHistory &history, Style style);
    static QImage sparkline(const RateHistory &history, QSize size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPointer<RateHistory> m_history;
    QString m_placeholder;
};
