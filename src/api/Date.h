#pragma once

#include <QDateTime>

#include <cmath>
#include <compare>

namespace API {

// An instant as the server writes it: seconds since 1970 UTC, kept exactly (fractions, and
// negatives such as the server's -1 for "never"). A plain double so that decoding a list of
// 50,000 torrents builds no QDateTime; one is built only for what is shown.
class Date
{
public:
    // The epoch itself, which is also what a model shows for a date it never received.
    constexpr Date() = default;
    constexpr explicit Date(double secondsSinceEpoch)
        : m_seconds(secondsSinceEpoch)
    {
    }

    // Exact to the millisecond, as QDateTime holds no finer.
    static Date fromDateTime(const QDateTime &when)
    {
        return Date(static_cast<double>(when.toMSecsSinceEpoch()) / 1000.0);
    }

    constexpr double secondsSinceEpoch() const { return m_seconds; }

    // Rounded to the nearest millisecond; invalid beyond QDateTime's range (or for a non-finite value).
    QDateTime toDateTime() const
    {
        const double msecs = std::round(m_seconds * 1000.0);
        if (!(std::abs(msecs) <= maxMSecs))
            return {};
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(msecs), Qt::UTC);
    }

    friend constexpr bool operator==(Date, Date) = default;
    friend constexpr std::partial_ordering operator<=>(Date, Date) = default;

private:
    // Well inside both QDateTime's range and the doubles that hold whole milliseconds exactly.
    static constexpr double maxMSecs = 9.0e15;

    double m_seconds = 0;
};

} // namespace API
