#include "ui/ColumnState.h"

#include "settings/UserDefaults.h"

#include <QHeaderView>

void keepColumnState(QHeaderView &header, UserDefaults &defaults, UserDefaultsKey key)
{
    header.restoreState(defaults.dataValue(key));
    const auto save = [&header, &defaults, key] { defaults.setValue(key, header.saveState()); };
    QObject::connect(&header, &QHeaderView::sectionResized, &header, save);
    QObject::connect(&header, &QHeaderView::sectionMoved, &header, save);
    QObject::connect(&header, &QHeaderView::sortIndicatorChanged, &header, save);
}
