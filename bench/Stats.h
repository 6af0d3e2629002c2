#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace Bench {

// The middle of an odd count of runs, the upper middle of an even one.
inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline std::pair<double, double> range(const std::vector<double> &values)
{
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    return {*least, *most};
}

} // namespace Bench
