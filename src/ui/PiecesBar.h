#pragma once

#include "api/Records.h"

#include <QImage>
#include <QList>
#include <QWidget>

// A torrent's pieces as one bar: missing, downloading and held pieces in their colours, scaled to
// the width. Where many pieces share a pixel their colours mix by the share each takes. The picture
// is remade only when it is painted after the states or the width changed, so a hidden bar costs
// nothing.
class PiecesBar : public QWidget
{
    Q_OBJECT

public:
    explicit PiecesBar(QWidget *parent = nullptr);

    void setStates(QList<API::PieceState> states);
    const QList<API::PieceState> &states() const { return m_states; }
    QColor colour(API::PieceState state) const;

    // One row of `width` pixels for `states` in `colours` (missing, downloading, have).
    static QImage row(const QList<API::PieceState> &states, int width, const QColor (&colours)[3]);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QList<API::PieceState> m_states;
    QImage m_row; // what was drawn last; null when it must be made again
};
