#pragma once

#include <QWidget>

class QLineEdit;
class QSortFilterProxyModel;
class QTableView;
class TntCollection;
class TntTableModel;
class UserDefaults;

// The torrent table with its name filter: sorted on raw values, filtered by name, with its column
// order, widths and visibility kept in the settings.
class TntTableView : public QWidget
{
    Q_OBJECT

public:
    TntTableView(TntCollection &collection, UserDefaults &defaults, QWidget *parent = nullptr);
    ~TntTableView() override;

    QTableView *table() const { return m_table; }
    QLineEdit *filterField() const { return m_filter; }
    QSortFilterProxyModel *proxy() const { return m_proxy; }
    void focusFilter();

private:
    void saveColumns();

    UserDefaults &m_defaults;
    TntTableModel *m_model;
    QSortFilterProxyModel *m_proxy;
    QLineEdit *m_filter;
    QTableView *m_table;
};
