#include "valuetext/valuetext.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/wholepart.h"

namespace dorvale {

namespace {

constexpr int kMetric = 1;
constexpr int kImperial = 2;
constexpr int kMetricThousandth = 2;
constexpr int kInches = 1;
constexpr int kFeetAndInches = 3;
constexpr int kDecimal = 1;
constexpr int kFraction = 2;

constexpr int kMostDecimals = 9;
constexpr int kInchesPerFoot = 12;

/// 0.501 units of the last kept digit, for two decimals.
constexpr double kBiasOfHundredths = 0.00501;
constexpr double kBias = 0.501;

/// A fraction of the last shown unit that is too small to be written as a fraction.
constexpr double kLeastFraction = 0.01;

/// A value split for display. `inches` counts in the feet-and-inches form alone, where `whole` is
/// feet and `fraction` a part of an inch.
struct Split {
    int whole = 0;
    int inches = 0;
    double fraction = 0.0;
};

/// The nearest value whose whole part an int holds; splitting it and carrying into it cannot
/// overflow.
double withinInt(double value) {
    constexpr double limit = std::numeric_limits<int>::max();
    return std::isnan(value) ? value : std::clamp(value, -limit, limit);
}

/// Splits a value that the bias has still to be added to; a fraction that the bias makes whole is
/// carried.
Split splitOff(double value, double bias) {
    Split split;
    split.whole = wholePart(value);
    split.fraction = value + bias - split.whole;
    if (split.fraction >= 1.0) {
        split.fraction -= 1.0;
        ++split.whole;
    }
    return split;
}

int magnitude(int precision) {
    return std::abs(std::clamp(precision, -kMostDecimals, kMostDecimals));
}

double tenToThe(int exponent) {
    double power = 1.0;
    for (int i = 0; i < exponent; ++i) {
        power *= 10.0;
    }
    return power;
}

int withoutTrailingZeros(int digits) {
    while (digits % 10 == 0) {
        digits /= 10;
    }
    return digits;
}

/// How many units of 1 / denominator a fraction comes to; half a unit counts as one.
int unitsIn(double fraction, int denominator) {
    const double unit = 1.0 / denominator;
    const int units = wholePart(fraction / unit);
    const bool raised =
        fraction < units * unit - unit * 0.5 || fraction >= units * unit + unit * 0.5;
    return raised ? wholePart(units + 1.0) : units;
}

/// One value on its way to text in a format.
class Formatter {
public:
    Formatter(double value, const ValueFormat& format, ShortText& text)
        : format_(format),
          feetAndInches_(format.imperialForm == kFeetAndInches && format.unitSystem != kMetric),
          marks_(format.imperialForm == kFeetAndInches && format.unitSystem == kImperial),
          text_(text) {
        const double bias =
            format.numberForm == kDecimal ? kBias / tenToThe(magnitude(format.precision)) : 0.0;
        const double shown = withinInt(scaledToUnit(std::abs(value)));
        split_ = feetAndInches_ ? splitIntoFeet(shown, bias) : splitPlain(shown, bias);
    }

    void write() {
        if (format_.numberForm == kFraction) {
            appendNumberAndFraction();
        } else {
            appendWhole(/*evenZero=*/true);
            if (format_.numberForm == kDecimal && format_.precision != 0) {
                appendDecimals(text_, split_.fraction, format_.precision);
            }
        }
        if (marks_) {
            text_.append('"');
        }
    }

private:
    double scaledToUnit(double value) const {
        if (format_.unitSystem == kMetric) {
            return format_.metricUnit == kMetricThousandth ? value / 1000.0 : value;
        }
        return format_.imperialForm == kInches ? value : value / kInchesPerFoot;
    }

    bool showsWholeNumber() const {
        return (format_.numberForm == kDecimal && format_.precision == 0) ||
               (format_.numberForm == kFraction && format_.denominator == 1);
    }

    Split splitPlain(double value, double bias) const {
        if (showsWholeNumber()) {
            return {wholePart(value + bias), 0, 0.0};
        }
        Split split = splitOff(value, bias);
        split.fraction = std::abs(split.fraction);
        return split;
    }

    Split splitIntoFeet(double value, double bias) const {
        const int feet = wholePart(value);
        const Split inches = splitPlain((value - feet) * kInchesPerFoot, bias);
        Split split{feet, inches.whole, inches.fraction};
        carryInches(split);
        return split;
    }

    static void carryInches(Split& split) {
        if (split.inches >= kInchesPerFoot) {
            split.inches -= kInchesPerFoot;
            ++split.whole;
        }
    }

    /// The whole number: with marks feet and inches. A zero (with marks, of inches) is left out
    /// where a fraction follows.
    void appendWhole(bool evenZero) {
        if (marks_) {
            text_.appendDigits(split_.whole);
            text_.append("' ");
        }
        const int last = marks_ ? split_.inches : split_.whole;
        if (evenZero || last != 0) {
            text_.appendDigits(last);
        }
    }

    void appendNumberAndFraction() {
        const int denominator = format_.denominator;
        const int units = denominator > 0 ? unitsIn(split_.fraction, denominator) : 0;
        if (denominator > 0 && units == denominator) {
            carryUnit();
        } else if (units != 0) {
            appendWhole(/*evenZero=*/false);
            if (split_.fraction - kLeastFraction > 0.0) {
                appendFraction(text_, split_.fraction, denominator,
                               /*leadingBlank=*/marks_ || split_.whole != 0);
            }
            return;
        }
        appendWhole(/*evenZero=*/true);
    }

    /// The fraction has come to a whole unit.
    void carryUnit() {
        if (marks_) {
            ++split_.inches;
            carryInches(split_);
        } else {
            ++split_.whole;
        }
    }

    const ValueFormat& format_;
    bool feetAndInches_;
    bool marks_;
    Split split_;
    ShortText& text_;
};

} // namespace

ShortText lengthText(double value) {
    const Split split = splitOff(withinInt(value), kBiasOfHundredths);
    const double tenths = std::abs(split.fraction) * 10.0;
    const int hundredths = wholePart(tenths * 10.0);
    ShortText text;
    text.appendDigits(split.whole);
    if (hundredths < 1) {
        text.append(".00");
        return text;
    }
    text.append('.');
    if (wholePart(tenths) < 1) {
        text.append('0');
    }
    text.appendDigits(withoutTrailingZeros(hundredths));
    return text;
}

ShortText angleText(double degrees) {
    const Split split = splitOff(withinInt(degrees), kBias / 10.0 / 10.0);
    ShortText text;
    text.appendDigits(split.whole);
    appendDecimals(text, std::abs(split.fraction), -2);
    text.append(kAngleMark);
    return text;
}

std::optional<ShortText> formattedText(double value, const ValueFormat& format) {
    if (format.precision > kMostDecimals || format.precision < -kMostDecimals) {
        return std::nullopt;
    }
    std::optional<ShortText> text(std::in_place);
    Formatter(value, format, *text).write();
    return text;
}

void appendDecimals(ShortText& text, double fraction, int precision) {
    const int places = magnitude(precision);
    std::size_t leadingZeros = 0;
    double shifted = fraction;
    for (int i = 0; i < places; ++i) {
        shifted *= 10.0;
        if (wholePart(shifted) < 1) {
            ++leadingZeros;
        }
    }
    const bool keepsZeros = precision > 0;
    const int digits = wholePart(shifted);
    if (digits < 1) {
        if (keepsZeros) {
            text.append('.');
            text.append(static_cast<std::size_t>(places), '0');
        }
        return;
    }
    text.append('.');
    text.append(leadingZeros, '0');
    text.appendDigits(keepsZeros ? digits : withoutTrailingZeros(digits));
}

void appendFraction(ShortText& text, double fraction, int denominator, bool leadingBlank) {
    const int units = denominator == 0 ? 0 : unitsIn(fraction, denominator);
    if (units < 1) {
        return;
    }
    if (leadingBlank) {
        text.append(' ');
    }
    text.appendDigits(units);
    text.append('/');
    text.appendDigits(denominator);
}

} // namespace dorvale
