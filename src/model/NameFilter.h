#pragma once

#include <QString>

// The table's name filter: a name passes when it contains the typed text, ignoring case and
// accents ("ulysses" finds "Ülysses"). Empty text lets every name pass.
class NameFilter
{
public:
    NameFilter() = default;
    explicit NameFilter(const QString &text);

    bool isEmpty() const { return m_needle.isEmpty(); }
    bool matches(const QString &name) const;

    // Text reduced for matching: decomposed, accents dropped, case folded.
    static QString searchKey(const QString &text);

    friend bool operator==(const NameFilter &, const NameFilter &) = default;

private:
    QString m_needle;
};
