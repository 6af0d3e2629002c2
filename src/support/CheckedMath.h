#pragma once

#include <QtGlobal>

#include <cmath>
#include <limits>

// Sums of byte counts must never wrap: a wrapped total would be shown as truth. Stop instead.
namespace CheckedMath {

inline qint64 add(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        qFatal("64-bit overflow adding %lld and %lld", static_cast<long long>(a), static_cast<long long>(b));
    return sum;
}

inline qint64 subtract(qint64 a, qint64 b)
{
    qint64 difference = 0;
    if (__builtin_sub_overflow(a, b, &difference))
        qFatal("64-bit overflow subtracting %lld from %lld", static_cast<long long>(b), static_cast<long long>(a));
    return difference;
}

inline qint64 toInt64(double value)
{
    // 2^63 is exactly representable; anything at or above it, or NaN, does not fit.
    if (!(value >= -9223372036854775808.0 && value < 9223372036854775808.0))
        qFatal("%f does not fit in 64 bits", value);
    return static_cast<qint64>(value);
}

} // namespace CheckedMath
