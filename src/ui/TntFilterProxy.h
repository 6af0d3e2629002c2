#pragma once

#include <QSortFilterProxyModel>

// Sorts the torrent table on raw values and keeps the rows whose name contains the typed text,
// ignoring case and accents ("ulysses" finds "Ülysses").
class TntFilterProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit TntFilterProxy(QObject *parent = nullptr);

    void setNameFilter(const QString &text);
    const QString &nameFilter() const { return m_needle; }

    // Text reduced for matching: decomposed, accents dropped, case folded.
    static QString searchKey(const QString &text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    // Names in the user's language order with numbers as numbers ("Part 2" before "Part 10"); the
    // other columns by their raw values.
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    QString m_needle;
};
