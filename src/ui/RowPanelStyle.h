#pragma once

#include <QHash>
#include <QProxyStyle>
#include <QRgb>

class QStyleOptionViewItem;

// A large table's style. QTableView asks the style for a row panel before every cell it paints,
// and Fusion works out a dozen frame colours on every call before it fills an alternate row or
// draws nothing: a tenth of a screen's paint. Here the base style paints one such panel per palette
// and kind of row into an image; a row it paints as nothing or as one flat colour is then drawn
// that way without it. Any other row (selected ones, a gradient, another style's frame) is the base
// style's to paint every time.
class RowPanelStyle : public QProxyStyle
{
public:
    // `base`: a name QStyleFactory knows, such as the application style's.
    explicit RowPanelStyle(const QString &base);

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;

private:
    enum class Look { nothing, flat, style };
    struct Panel
    {
        Look look;
        QRgb colour;
    };
    Panel probe(const QStyleOptionViewItem &option, const QWidget *widget) const;

    // By palette, and the row's state bits and features a panel may depend on.
    mutable QHash<std::pair<qint64, quint64>, Panel> m_panels;
};
