#include "host/step/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host::step {
namespace {

constexpr int kMostDecimals = 6;
/// Past this, a number with all its digits is no text for a drawing.
constexpr double kLargest = 1e12;

/// As few decimals as show a number.
int neededDecimals(double value) {
    double power = 1;
    for (int decimals = 0; decimals < kMostDecimals; ++decimals, power *= 10) {
        const double scaled = value * power;
        if (std::abs(scaled - std::round(scaled)) <= 1e-6 * std::max(1.0, std::abs(scaled)) * 0.1) {
            return decimals;
        }
    }
    return kMostDecimals;
}

bool isAngle(const Dimension& dimension) {
    return dimension.kind == DimensionKind::AngularSize ||
           dimension.kind == DimensionKind::AngularLocation || dimension.unit == "deg";
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

/// The sign in front of the number, by the dimension's name.
std::string signOf(const Dimension& dimension) {
    const bool spherical = contains(dimension.name, "spherical");
    const bool controlled = std::find(dimension.remarks.begin(), dimension.remarks.end(),
                                      "controlled radius") != dimension.remarks.end();
    if (contains(dimension.name, "diameter")) {
        return spherical ? "S⌀" : "⌀";
    }
    if (contains(dimension.name, "radius")) {
        return spherical ? "SR" : controlled ? "CR" : "R";
    }
    if (contains(dimension.name, "curve")) {
        return "⌒";
    }
    return dimension.name == "square" ? "□" : "";
}

/// What the file adds to the number and no other mark tells.
std::string remarksOf(const Dimension& dimension) {
    std::string text;
    for (const std::string& remark : dimension.remarks) {
        if (remark == "maximum") {
            text += " MAX";
        } else if (remark == "minimum") {
            text += " MIN";
        } else if (remark == "average") {
            text += " AVG";
        } else if (remark == "statistical") {
            text += " <ST>";
        }
    }
    return text;
}

/// `+0.2`; of zero the sign alone is kept: `-0`.
std::string signedText(double value, bool isUpper, int decimals) {
    const std::string digits = fixedText(std::abs(value), decimals);
    if (digits.find_first_of("123456789") == std::string::npos) {
        return isUpper ? "+0" : "-0";
    }
    return (value < 0 ? "-" : "+") + digits;
}

std::string toleranceText(const Dimension& dimension, int decimals, const std::string& degree) {
    if (!dimension.fit.empty()) {
        return " " + dimension.fit;
    }
    if (!dimension.upper && !dimension.lower) {
        return {};
    }
    const double upper = dimension.upper.value_or(0);
    const double lower = dimension.lower.value_or(0);
    const int digits = std::max({decimals, neededDecimals(upper), neededDecimals(lower)});
    if (std::abs(upper + lower) <= 1e-9 * std::max(1.0, std::abs(upper)) && upper != 0) {
        return " ±" + fixedText(std::abs(upper), digits) + degree;
    }
    std::string text = " ";
    text += signedText(upper, /*isUpper=*/true, digits) + degree;
    text += '/';
    text += signedText(lower, /*isUpper=*/false, digits) + degree;
    return text;
}

} // namespace

std::string fixedText(double value, int decimals) {
    if (!(std::abs(value) < kLargest)) {
        return "?";
    }
    char digits[64];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals)
            .ptr;
    std::string text(digits, end);
    if (text.front() == '-' && text.find_first_of("123456789") == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

int decimalsOf(const Dimension& dimension) {
    return dimension.decimals.value_or(neededDecimals(dimension.nominal.value_or(0)));
}

std::vector<std::string> valueText(const Dimension& dimension, int places) {
    if (!dimension.nominal) {
        return {};
    }
    const std::string degree = isAngle(dimension) ? "°" : "";
    const int decimals = decimalsOf(dimension);
    const std::string times = places > 1 ? std::to_string(places) + "X " : "";
    const std::string start = times + signOf(dimension);
    if (dimension.limits && dimension.upper && dimension.lower) {
        const double high = *dimension.nominal + *dimension.upper;
        const double low = *dimension.nominal + *dimension.lower;
        const int digits = std::max({decimals, neededDecimals(high), neededDecimals(low)});
        return {start + fixedText(high, digits) + degree, start + fixedText(low, digits) + degree};
    }
    std::string value = signOf(dimension) + fixedText(*dimension.nominal, decimals) + degree;
    value += toleranceText(dimension, decimals, degree) + remarksOf(dimension);
    if (dimension.modifier == Modifier::Reference) {
        value = "(" + value + ")";
    }
    return {times + value};
}

std::string oneLine(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : " / ") + line;
    }
    return text;
}

} // namespace host::step
