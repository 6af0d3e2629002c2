#pragma once

#include "settings/UserDefaultsKey.h"

class QHeaderView;
class UserDefaults;

// Keeps a table's column widths, order, visibility and sort under `key`: restored at once, saved
// whenever the user changes one of them.
void keepColumnState(QHeaderView &header, UserDefaults &defaults, UserDefaultsKey key);
