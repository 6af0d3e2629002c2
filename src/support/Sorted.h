#pragma once

#include <QList>
#include <QSet>

#include <algorithm>

// A set's values in order, so that a request's bytes do not depend on hashing.
template <typename T> QList<T> sorted(const QSet<T> &values)
{
    QList<T> list = values.values();
    std::sort(list.begin(), list.end());
    return list;
}
