#include "host/output/json.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host {
namespace {

using nlohmann::ordered_json;

constexpr std::size_t kIndentStep = 2;
constexpr std::size_t kLineLength = 100;

bool isFlat(const ordered_json& value) {
    return std::none_of(value.begin(), value.end(),
                        [](const ordered_json& item) { return item.is_structured(); });
}

std::string quoted(const std::string& text) {
    return ordered_json(text).dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

std::string scalarText(const ordered_json& value) {
    if (value.is_string()) {
        return quoted(value.get_ref<const std::string&>());
    }
    if (!value.is_number_float()) {
        return value.dump();
    }
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value.get<double>()).ptr};
}

std::string memberName(const ordered_json::const_iterator& item, bool isObject) {
    return isObject ? quoted(item.key()) + ": " : std::string();
}

std::string onOneLine(const ordered_json& value) {
    std::string text;
    for (auto item = value.begin(); item != value.end(); ++item) {
        text += text.empty() ? "" : ", ";
        text += memberName(item, value.is_object()) + scalarText(*item);
    }
    return value.is_object() ? '{' + text + '}' : '[' + text + ']';
}

} // namespace

ordered_json number(double value) {
    if (!std::isfinite(value)) {
        return nullptr;
    }
    return value == 0 ? 0.0 : value;
}

ordered_json number(float value) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    double widened = 0;
    std::from_chars(digits, end, widened);
    return std::isfinite(value) ? number(widened) : ordered_json(nullptr);
}

ordered_json numbers(const ANK_PNT32& point) {
    return ordered_json::array({number(point.x), number(point.y), number(point.z)});
}

ordered_json numbers(const ANK_DIR32& direction) {
    return ordered_json::array({number(direction.x), number(direction.y), number(direction.z)});
}

void appendText(std::string& text, const ordered_json& value, std::size_t indent) {
    if (!value.is_structured()) {
        text += scalarText(value);
        return;
    }
    if (isFlat(value)) {
        const std::string line = onOneLine(value);
        if (value.is_array() || indent + line.size() <= kLineLength) {
            text += line;
            return;
        }
    }
    const std::size_t inner = indent + kIndentStep;
    text += value.is_object() ? "{" : "[";
    for (auto item = value.begin(); item != value.end(); ++item) {
        text += item == value.begin() ? "\n" : ",\n";
        text.append(inner, ' ');
        text += memberName(item, value.is_object());
        appendText(text, *item, inner);
    }
    text += '\n';
    text.append(indent, ' ');
    text += value.is_object() ? '}' : ']';
}

} // namespace host
