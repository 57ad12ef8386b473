#include "host/finish/label.h"

#include <algorithm>
#include <array>
#include <memory>
#include <numbers>
#include <numeric>
#include <utility>
#include <vector>

#include <dorvale/dorvale.h>

namespace host {
namespace {

constexpr double kInch = 25.4;
constexpr double kDegreesOfRadian = 180 / std::numbers::pi;

constexpr const char* kFields =
    "expected {}, {.0} to {.9}, {.0in} to {.9in}, {/2in} to {/1000in}, {//2in} to {//1000in}, "
    "{ft}, {/2ft} to {/1000ft}, {//2ft} to {//1000ft}, {.0rad} to {.9rad} or {dms}";

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

/// The format of whole numbers.
constexpr std::array<int, 6> kWhole{1, 1, 1, 1, 0, 0};

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

/// A field by what stands between its braces; nothing where there is no such field.
std::optional<Field> fieldOf(std::wstring_view inside) {
    constexpr int kMostDecimals = 9;
    constexpr int kFinest = 1000;
    if (inside.empty()) {
        return Field{};
    }
    if (inside == L"ft") {
        return Field{Field::Form::Feet, 0};
    }
    if (inside == L"dms") {
        return Field{Field::Form::Sexagesimal, 0};
    }
    const bool isReduced = inside.starts_with(L"//");
    if (isReduced) {
        inside.remove_prefix(1);
    }
    const std::wstring_view digits = inside.substr(1, inside.find_last_of(L"0123456789"));
    const std::optional<int> count = wholeNumber(digits);
    if (!count) {
        return std::nullopt;
    }
    struct Unit {
        std::wstring_view name;
        Field::Form form;
    };
    constexpr std::array<Unit, 3> kOfDecimals{{{L"", Field::Form::Decimals},
                                               {L"in", Field::Form::Inches},
                                               {L"rad", Field::Form::Radians}}};
    constexpr std::array<Unit, 2> kOfFractions{
        {{L"in", Field::Form::InchFraction}, {L"ft", Field::Form::FeetFraction}}};
    const auto field =
        [&, name = inside.substr(1 + digits.size())](const auto& units) -> std::optional<Field> {
        for (const Unit& unit : units) {
            if (unit.name == name) {
                return Field{unit.form, *count, isReduced};
            }
        }
        return std::nullopt;
    };
    if (inside.front() == L'.' && *count <= kMostDecimals) {
        return field(kOfDecimals);
    }
    if (inside.front() == L'/' && *count > 1 && *count <= kFinest) {
        return field(kOfFractions);
    }
    return std::nullopt;
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

std::wstring wholeText(int number) { return ValueText::of(number, kWhole); }

/// A text with its fraction in lowest terms.
std::wstring reduced(const std::wstring& text) {
    constexpr const wchar_t* kDigits = L"0123456789";
    const std::size_t slash = text.find(L'/');
    if (slash == std::wstring::npos) {
        return text;
    }
    const std::size_t start = text.find_last_not_of(kDigits, slash - 1) + 1;
    const std::size_t end = std::min(text.find_first_not_of(kDigits, slash + 1), text.size());
    const int numerator =
        wholeNumber(std::wstring_view(text).substr(start, slash - start)).value_or(1);
    const int denominator =
        wholeNumber(std::wstring_view(text).substr(slash + 1, end - slash - 1)).value_or(1);
    const int common = std::gcd(numerator, denominator);
    return text.substr(0, start) + wholeText(numerator / common) + L'/' +
           wholeText(denominator / common) + text.substr(end);
}

/// An angle of at least 0 in degrees, minutes and seconds.
std::wstring sexagesimal(double degrees) {
    constexpr int kParts = 60;
    int seconds = 0;
    for (const wchar_t digit : ValueText::of(degrees * kParts * kParts, kWhole)) {
        seconds = 10 * seconds + (digit - L'0');
    }
    return wholeText(seconds / (kParts * kParts)) + L"\u00B0 " +
           wholeText(seconds / kParts % kParts) + L"' " + wholeText(seconds % kParts) + L'"';
}

/// The number in a field's form. The six numbers are those of `CDimSymUitity::SeStrCre`.
std::wstring textOf(const Field& field, double value) {
    switch (field.form) {
    case Field::Form::Inches:
        return ValueText::of(value / kInch, {2, 0, 1, 1, field.count, 0});
    case Field::Form::InchFraction:
        return ValueText::of(value / kInch, {2, 0, 1, 2, 0, field.count});
    case Field::Form::Feet:
        return ValueText::of(value / kInch, {2, 0, 3, 1, -2, 0});
    case Field::Form::FeetFraction:
        return ValueText::of(value / kInch, {2, 0, 3, 2, 0, field.count});
    case Field::Form::Radians:
        return ValueText::of(value / kDegreesOfRadian, {1, 1, 1, 1, field.count, 0});
    case Field::Form::Sexagesimal:
        return sexagesimal(value);
    default:
        return ValueText::of(value, {1, 1, 1, 1, field.count, 0});
    }
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
        if (part.field.isOfLengths() && quantity == Quantity::Angle) {
            return "an angle cannot be in inches or feet";
        }
        if (part.field.isOfAngles() && quantity == Quantity::Length) {
            return "a length cannot be in radians or degrees";
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
            const std::wstring number = asWritten ? written : textOf(part.field, measured.value);
            filled += part.field.isReduced ? reduced(number) : number;
        }
    }
    return filled;
}

} // namespace host
