#pragma once

#include "settings/UserDefaults.h"

#include <QAbstractItemView>

// Draws the view's rows in alternating colors as the settings say, now and after every change.
inline void followAlternateRows(QAbstractItemView *view, UserDefaults &defaults)
{
    const auto show = [view, &defaults] {
        view->setAlternatingRowColors(defaults.boolValue(UserDefaultsKey::alternateRows, true));
    };
    show();
    QObject::connect(&defaults, &UserDefaults::valueChanged, view, [show](UserDefaultsKey key) {
        if (key == UserDefaultsKey::alternateRows)
            show();
    });
}
