/// @file
/// The C library's sine and cosine take angles of any size, and carry 3 KB of digits of 2 / pi for
/// those beyond a million turns. No angle here is one: all of them are arc tangents and arc sines,
/// turned by two turns at most. A larger one would have no sine.

#include <limits>

/// Of an angle beyond 2^20 quarter turns, what is left of the last one, in two parts.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the C library's name
extern "C" int __rem_pio2_large(double* /*angle*/, double* left, int /*exponent*/, int /*parts*/,
                                int /*precision*/) {
    left[0] = std::numeric_limits<double>::quiet_NaN();
    left[1] = left[0];
    return 0;
}
