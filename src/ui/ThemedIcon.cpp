#include "ui/ThemedIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// Outside any namespace: the macro declares the resource's registration function.
static void initResources()
{
    Q_INIT_RESOURCE(sidebar);
}

namespace {

// The one ink our monochrome pictures are drawn in; it reads on light backgrounds only.
const QByteArray symbolicInk = QByteArrayLiteral("#5f6368");

// Draws a monochrome picture in the palette's text colour at paint time, so that it stays visible
// when the desktop turns dark (or the user picks another palette) while Quillo runs. Pictures in
// colour are drawn as they are.
class SymbolicIconEngine : public QIconEngine
{
public:
    SymbolicIconEngine(QString path, QByteArray svg)
        : m_path(std::move(path))
        , m_svg(std::move(svg))
    {}

    QIconEngine *clone() const override { return new SymbolicIconEngine(*this); }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(rect, pixmap(rect.size() * painter->device()->devicePixelRatioF(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        const QColor ink = inkFor(mode);
        const QString key = QStringLiteral("quillo-symbolic:%1:%2x%3:%4")
                                .arg(m_path)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(ink.rgba(), 0, 16);
        QPixmap cached;
        if (QPixmapCache::find(key, &cached))
            return cached;
        QByteArray svg = m_svg;
        svg.replace(symbolicInk, ink.name(QColor::HexRgb).toLatin1());
        QSvgRenderer renderer(svg);
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setOpacity(ink.alphaF());
        renderer.render(&painter);
        painter.end();
        cached = QPixmap::fromImage(image);
        QPixmapCache::insert(key, cached);
        return cached;
    }

    QSize actualSize(const QSize &size, QIcon::Mode, QIcon::State) override { return size; }
    QString key() const override { return QStringLiteral("QuilloSymbolic"); }
    bool isNull() override { return m_svg.isEmpty(); }

private:
    QColor inkFor(QIcon::Mode mode) const
    {
        const QPalette palette = QGuiApplication::palette();
        switch (mode) {
        case QIcon::Disabled: return palette.color(QPalette::Disabled, QPalette::WindowText);
        case QIcon::Selected: return palette.color(QPalette::Active, QPalette::HighlightedText);
        case QIcon::Normal:
        case QIcon::Active: break;
        }
        return palette.color(QPalette::Active, QPalette::WindowText);
    }

    QString m_path;
    QByteArray m_svg;
};

QIcon lookedUp(QStringView themeName, QStringView bundled)
{
    const QString path = QStringLiteral(":/bundled/icons/%1.svg").arg(bundled);
    QFile file(path);
    QByteArray svg = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QIcon picture =
        svg.contains(symbolicInk) ? QIcon(new SymbolicIconEngine(path, std::move(svg))) : QIcon(path);
    if (themeName.isEmpty())
        return picture;
    const QString name = themeName.toString();
    // Themes of the GNOME family name their monochrome icons with a suffix.
    return QIcon::fromTheme(name, QIcon::fromTheme(name + QStringLiteral("-symbolic"), picture));
}

} // namespace

QIcon themedIcon(QStringView themeName, QStringView bundled)
{
    [[maybe_unused]] static const bool registered = (initResources(), true);
    // A name looked up in the icon theme is tried in every folder of the theme and of those it
    // inherits, on disk and in the resources: a window's worth of icons took a third of the start.
    // An icon the theme has follows a change of theme by itself.
    static QHash<QString, QIcon> made;
    const QString key = themeName.toString() + u'\n' + bundled.toString();
    if (const auto found = made.constFind(key); found != made.cend())
        return *found;
    return *made.insert(key, lookedUp(themeName, bundled));
}
