// From numbers to whole numbers.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace dorvale {

/// The whole part of a number, cut off towards zero: saturated to the range of int, 0 for NaN.
/// Every conversion of a double to an int goes through here.
inline int wholePart(double value) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, least, most));
}

} // namespace dorvale
