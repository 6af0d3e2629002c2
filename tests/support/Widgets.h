#pragma once

#include "ui/TntTableModel.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QItemSelectionModel>
#include <QMenu>
#include <QTableView>

// Small lookups the window tests share: widgets are found by the text the user reads.
namespace QuilloTest {

inline QAction *menuItem(const QMenu &menu, const QString &text)
{
    const QList<QAction *> actions = menu.actions();
    const auto found = std::find_if(actions.cbegin(), actions.cend(), [&text](QAction *a) { return a->text() == text; });
    return found == actions.cend() ? nullptr : *found;
}

inline QAbstractButton *button(const QWidget &dialog, const QString &text)
{
    for (QAbstractButton *candidate : dialog.findChildren<QAbstractButton *>()) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

// Selects the table's rows of `hashes`, and only those.
inline void selectRows(QTableView &table, const QSet<QString> &hashes)
{
    table.clearSelection();
    for (int row = 0; row < table.model()->rowCount(); ++row) {
        const QModelIndex index = table.model()->index(row, 0);
        if (hashes.contains(index.data(TntTableModel::HashRole).toString()))
            table.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

} // namespace QuilloTest
