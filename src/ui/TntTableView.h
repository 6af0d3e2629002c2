#pragma once

#include <QSet>
#include <QWidget>

class QLineEdit;
class QTableView;
class QTimer;
class TntFilterProxy;
class TntCollection;
class UserDefaults;

// The torrent table with its name filter: sorted on raw values, filtered by name a moment after the
// typing pauses (filtering 50,000 names per keystroke would stall typing), with its column order,
// widths and visibility kept in the settings.
class TntTableView : public QWidget
{
    Q_OBJECT

public:
    TntTableView(TntCollection &collection, UserDefaults &defaults, QWidget *parent = nullptr);
    ~TntTableView() override;

    QTableView *table() const { return m_table; }
    QLineEdit *filterField() const { return m_filter; }
    TntFilterProxy *proxy() const { return m_proxy; }
    void focusFilter();
    QSet<QString> selectedHashes() const;
    // The selected torrents from the top of the table down.
    QStringList selectedHashesInOrder() const;
    // Selects the shown rows of `hashes`, for a selection changed elsewhere (a removal empties it).
    void selectHashes(const QSet<QString> &hashes);

Q_SIGNALS:
    void selectionChanged(const QSet<QString> &hashes);
    // A right click on a row: the torrents a context menu there acts on.
    void contextMenuRequested(const QStringList &hashes, const QPoint &globalPosition);
    // A row activated: double-clicked, or Enter pressed on it (a single click where the desktop
    // opens items so).
    void openRequested(const QString &hash);

private:
    void saveColumns();
    void requestContextMenu(const QPoint &position);

    TntCollection &m_collection;
    UserDefaults &m_defaults;
    TntFilterProxy *m_proxy;
    QLineEdit *m_filter;
    QTimer *m_filterDelay;
    QTimer *m_saveDelay;
    QTableView *m_table;
    bool m_announcing = false;
};
