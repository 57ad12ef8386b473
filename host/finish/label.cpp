#include "host/finish/label.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

#include <dorvale/dorvale.h>

namespace host {
namespace {

constexpr double kInch = 25.4;

constexpr const char* kFields =
    "expected {}, {.0} to {.9}, {.0in} to {.9in}, {/2in} to {/1000in} or {ft}";

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
    enum class Form { Written, Decimals, Inches, InchFraction, Feet };

    Form form = Form::Written;
    /// Decimals, or the fraction's denominator.
    int count = 0;

    bool isOfLengths() const { return form != Form::Written && form != Form::Decimals; }
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
    constexpr std::wstring_view kInches = L"in";
    if (inside.empty()) {
        return Field{};
    }
    if (inside == L"ft") {
        return Field{Field::Form::Feet, 0};
    }
    const wchar_t kind = inside.front();
    std::wstring_view digits = inside.substr(1);
    const bool inches = digits.ends_with(kInches);
    if (inches) {
        digits.remove_suffix(kInches.size());
    }
    const std::optional<int> count = wholeNumber(digits);
    if (kind == L'.' && count && *count <= kMostDecimals) {
        return Field{inches ? Field::Form::Inches : Field::Form::Decimals, *count};
    }
    if (kind == L'/' && inches && count && *count > 1 && *count <= kFinest) {
        return Field{Field::Form::InchFraction, *count};
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

/// The number in a field's form. The six numbers are those of `CDimSymUitity::SeStrCre`.
std::wstring textOf(const Field& field, double value) {
    switch (field.form) {
    case Field::Form::Inches:
        return ValueText::of(value / kInch, {2, 0, 1, 1, field.count, 0});
    case Field::Form::InchFraction:
        return ValueText::of(value / kInch, {2, 0, 1, 2, 0, field.count});
    case Field::Form::Feet:
        return ValueText::of(value / kInch, {2, 0, 3, 1, -2, 0});
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
