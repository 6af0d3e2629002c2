#pragma once

#include <QWidget>

// "Drop Files here" over its parent while torrents are dragged over the window. Transparent to the
// mouse, so that the drag goes on to the window beneath.
class DropOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit DropOverlay(QWidget *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
