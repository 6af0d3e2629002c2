#include "ui/StartupTrace.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QLoggingCategory>
#include <QTimer>
#include <QWidget>

Q_LOGGING_CATEGORY(lcStartup, "Startup", QtInfoMsg)

namespace {

// A paint event arrives before its painting; the next queued call runs once the frame is done.
class PaintWatcher : public QObject
{
public:
    PaintWatcher(QWidget &window, QAbstractItemView &table, QElapsedTimer sinceStart)
        : QObject(&window)
        , m_window(window)
        , m_table(table)
        , m_sinceStart(sinceStart)
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || !watched->isWidgetType())
            return false;
        auto *widget = static_cast<QWidget *>(watched);
        if (!m_windowSeen && widget->window() == &m_window) {
            m_windowSeen = true;
            QTimer::singleShot(0, this, [this] {
                qCDebug(lcStartup, "Window painted %lld ms after start", m_sinceStart.elapsed());
            });
        }
        const int rows = m_table.model() ? m_table.model()->rowCount() : 0;
        if (!m_tableSeen && widget == m_table.viewport() && rows > 0) {
            m_tableSeen = true;
            QTimer::singleShot(0, this, [this, rows] {
                qCDebug(lcStartup, "Table painted with %d rows %lld ms after start", rows, m_sinceStart.elapsed());
            });
        }
        if (m_windowSeen && m_tableSeen)
            qApp->removeEventFilter(this);
        return false;
    }

private:
    QWidget &m_window;
    QAbstractItemView &m_table;
    const QElapsedTimer m_sinceStart;
    bool m_windowSeen = false;
    bool m_tableSeen = false;
};

} // namespace

void StartupTrace::watch(QWidget &window, QAbstractItemView &table, QElapsedTimer sinceStart)
{
    if (lcStartup().isDebugEnabled())
        new PaintWatcher(window, table, sinceStart);
}
