#include "host/finish/label.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

#include <dorvale/dorvale.h>

namespace host {
namespace {

constexpr double kInch = 25.4;
constexpr double kDegreesOfRadian = 180 / std::numbers::pi;

constexpr const char* kFields =
    "expected {}, {.0} to {.9}, also as {.0in} or {.0rad}, {/2in} to {/1000in}, also as {//2in}, "
    "{/2ft} or {//2ft}, {ft} or {dms}";

/// The library's own formatter, which hosts reach by deriving from its class.
class ValueText : public CDimSymUitity {
public:
    /// In a format of six numbers; empty where there is none.
    static std::wstring of(double value, std::array<int, 6> format) {
        char* text = nullptr;
        if (SeStrCre(value, format.data(), &text) != 0) {
            return {};
        }
        const std::unique_ptr<char[]> owner(text);
        const std::string_view ascii(text);
        return {ascii.begin(), ascii.end()};
    }
};

/// What a field shows.
struct Field {
    enum class Form {
        Written,
        Decimals,
        Inches,
        InchFraction,
        Feet,
        FeetFraction,
        Radians,
        Sexagesimal
    };

    Form form = Form::Written;
    /// Decimals, or the fraction's denominator.
    int count = 0;
    /// Whether a fraction is in its lowest terms.
    bool isReduced = false;

    bool isOfAngles() const { return form == Form::Radians || form == Form::Sexagesimal; }
    bool isOfLengths() const {
        return form != Form::Written && form != Form::Decimals && !isOfAngles();
    }
};

/// A number of one to four digits without leading zeros; nothing for any other text.
std::optional<int> wholeNumber(std::wstring_view digits) {
    constexpr std::size_t kMostDigits = 4;
    if (digits.empty() || digits.size() > kMostDigits || (digits[0] == L'0' && digits.size() > 1)) {
        return std::nullopt;
    }
    int number = 0;
    for (const wchar_t c : digits) {
        if (c < L'0' || c > L'9') {
            return std::nullopt;
        }
        number = 10 * number + (c - L'0');
    }
    return number;
}

/// The form of a number in a unit: decimals or, behind a slash, a fraction; `Written` for no such
/// unit.
Field::Form formOf(bool isFraction, std::wstring_view unit) {
    using Form = Field::Form;
    if (unit == L"in") {
        return isFraction ? Form::InchFraction : Form::Inches;
    }
    if (isFraction) {
        return unit == L"ft" ? Form::FeetFraction : Form::Written;
    }
    return unit.empty() ? Form::Decimals : unit == L"rad" ? Form::Radians : Form::Written;
}

/// A field by what stands between its braces; nothing where there is no such field.
std::optional<Field> fieldOf(std::wstring_view inside) {
    constexpr int kMostDecimals = 9;
    constexpr int kFinest = 1000;
    if (inside.empty()) {
        return Field{};
    }
    if (inside == L"ft") {
        return Field{Field::Form::Feet};
    }
    if (inside == L"dms") {
        return Field{Field::Form::Sexagesimal};
    }
    const bool isReduced = inside.starts_with(L"//");
    inside.remove_prefix(isReduced ? 1 : 0);
    const bool isFraction = inside.front() == L'/';
    const std::wstring_view digits = inside.substr(1, inside.find_last_of(L"0123456789"));
    const std::optional<int> count = wholeNumber(digits);
    if (!count || (!isFraction && inside.front() != L'.')) {
        return std::nullopt;
    }
    const Field field{formOf(isFraction, inside.substr(1 + digits.size())), *count, isReduced};
    const bool isRight = isFraction ? *count > 1 && *count <= kFinest : *count <= kMostDecimals;
    return isRight && field.form != Field::Form::Written ? std::optional(field) : std::nullopt;
}

/// A part of a label.
struct Part {
    enum class Kind { Text, Field, Mistake };

    Kind kind = Kind::Mistake;
    std::wstring_view text;
    Field field;
};

/// The part that begins with a brace, and how long it is.
std::pair<Part, std::size_t> readBrace(std::wstring_view line) {
    const std::size_t close = line.find(L'}');
    if (line.size() > 1 && line[1] == line[0]) {
        return {{Part::Kind::Text, line.substr(0, 1), {}}, 2};
    }
    if (line[0] != L'{' || close == std::wstring_view::npos) {
        return {{}, 1};
    }
    const auto field = fieldOf(line.substr(1, close - 1));
    return {field ? Part{Part::Kind::Field, {}, *field} : Part{}, close + 1};
}

/// A line's parts, from left to right.
std::vector<Part> partsOf(std::wstring_view line) {
    std::vector<Part> parts;
    while (!line.empty()) {
        const std::size_t textEnd = std::min(line.find_first_of(L"{}"), line.size());
        if (textEnd > 0) {
            parts.push_back({Part::Kind::Text, line.substr(0, textEnd), {}});
            line.remove_prefix(textEnd);
        } else {
            const auto [part, size] = readBrace(line);
            parts.push_back(part);
            line.remove_prefix(size);
        }
    }
    return parts;
}

/// An angle of at least 0 in degrees, minutes and seconds, rounded as the library rounds.
std::wstring sexagesimal(double degrees) {
    constexpr double kParts = 60;
    const double seconds = std::floor(kParts * kParts * degrees + 0.501);
    const double minutes = std::floor(seconds / kParts);
    const double whole = std::floor(minutes / kParts);
    const double parts[] = {whole, minutes - kParts * whole, seconds - kParts * minutes};
    constexpr const wchar_t* kMarks[] = {L"\u00B0 ", L"' ", L"\""};
    std::wstring text;
    for (int i = 0; i < 3; ++i) {
        text += ValueText::of(parts[i], {1, 1, 1, 1, 0, 0});
        text += kMarks[i];
    }
    return text;
}

/// The denominator of a field's fraction.
int denominatorOf(const Field& field, double inches) {
    const double parts = std::floor(inches * field.count + 0.5);
    for (int lower = 2; field.isReduced && lower < field.count; ++lower) {
        const double same = parts * lower / field.count;
        if (field.count % lower == 0 && same == std::floor(same)) {
            return lower;
        }
    }
    return field.count;
}

/// The number in a field's form. The six numbers are those of `CDimSymUitity::SeStrCre`.
std::wstring textOf(const Field& field, double value) {
    using Form = Field::Form;
    if (field.form == Form::Sexagesimal) {
        return sexagesimal(value);
    }
    const bool isImperial = field.isOfLengths();
    const double unit = isImperial ? kInch : field.form == Form::Radians ? kDegreesOfRadian : 1;
    const double number = value / unit;
    const bool isInFeet = field.form == Form::Feet || field.form == Form::FeetFraction;
    const bool isFraction = field.form == Form::InchFraction || field.form == Form::FeetFraction;
    const int decimals = field.form == Form::Feet ? -2 : isFraction ? 0 : field.count;
    return ValueText::of(number, {isImperial ? 2 : 1, isImperial ? 0 : 1, isInFeet ? 3 : 1,
                                  isFraction ? 2 : 1, decimals,
                                  isFraction ? denominatorOf(field, number) : 0});
}

} // namespace

std::optional<std::string_view> mistakeInLabel(std::wstring_view line) {
    for (const Part& part : partsOf(line)) {
        if (part.kind == Part::Kind::Mistake) {
            return kFields;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> misfitOfLabel(std::wstring_view line, Quantity quantity) {
    if (quantity == Quantity::None) {
        return "there is no value that it could stand in place of";
    }
    for (const Part& part : partsOf(line)) {
        const bool isAngle = quantity == Quantity::Angle;
        if (isAngle ? part.field.isOfLengths() : part.field.isOfAngles()) {
            return "lengths and angles have units of their own";
        }
    }
    return std::nullopt;
}

std::wstring filledLabel(std::wstring_view line, const Measured& measured,
                         const std::wstring& written) {
    std::wstring filled;
    for (const Part& part : partsOf(line)) {
        if (part.kind == Part::Kind::Text) {
            filled += part.text;
        } else if (part.kind == Part::Kind::Field) {
            const bool asWritten = part.field.form == Field::Form::Written;
            filled += asWritten ? written : textOf(part.field, measured.value);
        }
    }
    return filled;
}

} // namespace host
