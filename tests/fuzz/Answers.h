#pragma once

#include <QByteArray>
#include <QList>

#include <cstddef>
#include <cstdint>

// A fuzzing input read as one session's answers in order, separated by 0x1e (which JSON never
// holds unescaped), so that deltas are merged over what the answers before them left.
inline QList<QByteArray> answersOf(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)).split('\x1e');
}
