// Value text as a host takes it over, and read back as a number.
#pragma once

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <string_view>

#include "support/members.h"

namespace dorvale::test {

inline constexpr std::string_view kAngleMark = "\xA9\x62";

/// What a call hands out; or its status, where it hands out nothing.
template <typename Call> std::string taken(const Call& call) {
    int length = -1;
    char* text = nullptr;
    const int status = call(&length, &text);
    const std::unique_ptr<char[]> owned(text);
    if (status != 0) {
        return length == -1 && !owned ? "status " + std::to_string(status) : "more than a status";
    }
    const std::string_view written = text;
    return length == static_cast<int>(written.size()) ? text : "a text of another length";
}

inline std::string lengthText(double value) {
    return taken([&](int* n, char** text) { return CDimSymUitity::ValToStr(value, n, text); });
}

inline std::string angleText(double degrees) {
    return taken([&](int* n, char** text) { return CDimSymUitity::AngValToStr(degrees, n, text); });
}

inline std::string formatted(double value, std::array<int, 6> format) {
    return taken([&](int* length, char** text) {
        const int status = Members::SeStrCre(value, format.data(), text);
        *length = status == 0 ? static_cast<int>(std::string_view(*text).size()) : -1;
        return status;
    });
}

/// The number that a text shows, in inches where it has marks: `5`, `5.25`, `5 2/8`, `2/8`,
/// `2' 6 4/8"`. Not a number where the form is another.
inline double shown(std::string text) {
    double whole = 0.0;
    const std::size_t mark = text.find("' ");
    if (mark != std::string::npos) {
        whole = text.ends_with('"') ? 12.0 * std::stod(text) : NAN;
        text = text.substr(mark + 2, text.size() - mark - 3);
    }
    if (const std::size_t bar = text.find('/'); bar != std::string::npos) {
        const std::size_t from = text.rfind(' ') + 1;
        const double part = std::stod(text.substr(from)) / std::stod(text.substr(bar + 1));
        whole += part < 1.0 ? part : NAN;
        text.resize(from);
    }
    const double last = text.empty() || text == " " ? 0.0 : std::stod(text);
    return mark == std::string::npos || last < 12.0 ? whole + last : NAN;
}

/// Whether a text shows a value, but for what its digits leave out and the value's own rounding.
inline bool shows(const std::string& text, double value, double reach) {
    return std::abs(shown(text) - value) <= reach + 1e-15 * (value + 1.0);
}

} // namespace dorvale::test
