#include "host/finish/label.h"

#include <array>
#include <functional>
#include <memory>
#include <numbers>
#include <variant>

#include <dorvale/dorvale.h>

namespace host {
namespace {

constexpr double kInch = 25.4;
constexpr double kDegreesOfRadian = 180 / std::numbers::pi;

constexpr const char* kFields =
    "expected {}, {.0} to {.9}, {.0in} to {.9in}, {/2in} to {/1000in}, {ft}, {/2ft} to {/1000ft}, "
    "{.0rad} to {.9rad} or {dms}";

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
    const auto field = [name = inside.substr(1 + digits.size()),
                        &count](const auto& units) -> std::optional<Field> {
        for (const Unit& unit : units) {
            if (unit.name == name) {
                return Field{unit.form, *count};
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

/// A part of a label: text, a field, or the place of a mistake.
struct Mistake {};
using Part = std::variant<std::wstring, Field, Mistake>;

/// Goes through a line from left to right; stops where `take` says false.
void readLabel(std::wstring_view line, const std::function<bool(const Part&)>& take) {
    while (!line.empty()) {
        const std::size_t brace = line.find_first_of(L"{}");
        const std::size_t textEnd = std::min(brace, line.size());
        if (textEnd > 0 && !take(std::wstring(line.substr(0, textEnd)))) {
            return;
        }
        line.remove_prefix(textEnd);
        if (line.empty()) {
            return;
        }
        const bool doubled = line.size() > 1 && line[1] == line[0];
        const std::size_t close = line.find(L'}');
        Part part = Mistake{};
        std::size_t size = 1;
        if (doubled) {
            part = std::wstring(line.substr(0, 1));
            size = 2;
        } else if (line[0] == L'{' && close != std::wstring_view::npos) {
            if (const auto field = fieldOf(line.substr(1, close - 1))) {
                part = *field;
            }
            size = close + 1;
        }
        if (!take(part)) {
            return;
        }
        line.remove_prefix(size);
    }
}

/// An angle of at least 0 in degrees, minutes and seconds.
std::wstring sexagesimal(double degrees) {
    constexpr int kParts = 60;
    constexpr std::array<int, 6> kWhole{1, 1, 1, 1, 0, 0};
    int seconds = 0;
    for (const wchar_t digit : ValueText::of(degrees * kParts * kParts, kWhole)) {
        seconds = 10 * seconds + (digit - L'0');
    }
    return ValueText::of(seconds / (kParts * kParts), kWhole) + L"\u00B0 " +
           ValueText::of(seconds / kParts % kParts, kWhole) + L"' " +
           ValueText::of(seconds % kParts, kWhole) + L'"';
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

std::optional<std::string> mistakeInLabel(std::wstring_view line) {
    std::optional<std::string> mistake;
    readLabel(line, [&mistake](const Part& part) {
        if (std::holds_alternative<Mistake>(part)) {
            mistake = kFields;
        }
        return !mistake;
    });
    return mistake;
}

std::optional<std::string> misfitOfLabel(std::wstring_view line, Quantity quantity) {
    if (quantity == Quantity::None) {
        return "there is no value that it could stand in place of";
    }
    std::optional<std::string> misfit;
    readLabel(line, [&](const Part& part) {
        const auto* field = std::get_if<Field>(&part);
        if (field != nullptr && field->isOfLengths() && quantity == Quantity::Angle) {
            misfit = "an angle cannot be in inches or feet";
        }
        if (field != nullptr && field->isOfAngles() && quantity == Quantity::Length) {
            misfit = "a length cannot be in radians or degrees";
        }
        return !misfit;
    });
    return misfit;
}

std::wstring filledLabel(std::wstring_view line, const Measured& measured,
                         const std::wstring& written) {
    std::wstring filled;
    readLabel(line, [&](const Part& part) {
        if (const auto* text = std::get_if<std::wstring>(&part)) {
            filled += *text;
        } else if (const auto* field = std::get_if<Field>(&part)) {
            filled +=
                field->form == Field::Form::Written ? written : textOf(*field, measured.value);
        }
        return true;
    });
    return filled;
}

} // namespace host
