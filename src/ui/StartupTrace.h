#pragma once

#include <QElapsedTimer>

class QAbstractItemView;
class QWidget;

// What start-up costs where a user sees it: with the "Startup" logging category on at debug level
// (QT_LOGGING_RULES="Startup.debug=true"), logs when the window was first painted and when the
// table was first painted with rows, counted from `sinceStart`. Off, it watches nothing.
namespace StartupTrace {

void watch(QWidget &window, QAbstractItemView &table, QElapsedTimer sinceStart);

} // namespace StartupTrace
