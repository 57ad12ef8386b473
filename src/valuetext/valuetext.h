// Lengths and angles as narrow text.
//
// Every form rounds in the same biased way: 0.501 units of the last kept digit are added and the
// rest is cut off, so that a value a hair below a half still goes up.
#pragma once

#include <optional>

#include "valuetext/shorttext.h"

namespace dorvale {

/// What stands behind an angle: two bytes that the viewer's code page reads as U+309C, which it
/// shows as a degree sign.
inline constexpr std::string_view kAngleMark = "\xA9\x62";

/// How a value is shown; the fields are those of the exported format array, in its order.
struct ValueFormat {
    int unitSystem;
    int metricUnit;
    int imperialForm;
    int numberForm;
    int precision;
    int denominator;
};

/// Millimetres with at most two decimals.
inline constexpr ValueFormat kArcLengthFormat{1, 1, 1, 1, -2, 4};

/// A length that is not negative, with at most two decimals; a whole one keeps both.
ShortText lengthText(double value);
/// An angle in degrees with at most two decimals and no sign, and the angle mark.
ShortText angleText(double degrees);
/// A value's magnitude in a format; none for a precision past 9.
std::optional<ShortText> formattedText(double value, const ValueFormat& format);

/// The decimals of a fraction from 0 to 1. A precision above 0 keeps trailing zeros, one below
/// drops them; its magnitude counts up to 9.
void appendDecimals(ShortText& text, double fraction, int precision);
/// A fraction in units of 1 / denominator, unreduced; nothing where it comes to none.
void appendFraction(ShortText& text, double fraction, int denominator, bool leadingBlank);

} // namespace dorvale
