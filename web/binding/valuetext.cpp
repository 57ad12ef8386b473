#include "web/binding/valuetext.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include <dorvale/dorvale.h>

namespace web {
namespace {

constexpr std::string_view kAngleMark = "\xA9\x62";
constexpr wchar_t kDegreeSign = 0x00B0;

enum class ValueOf { Length, Angle, Format };

struct ValueText : CDimSymUitity {
    using CDimSymUitity::SeStrCre;
};

/// 0 where there is a text.
int write(double value, std::span<const int> format, char** text) {
    int length = 0;
    std::array<int, 7> form{};
    std::copy_n(format.begin(), std::min(format.size(), form.size()), form.begin());
    switch (static_cast<ValueOf>(form[0])) {
    case ValueOf::Length:
        return CDimSymUitity::ValToStr(value, &length, text);
    case ValueOf::Angle:
        return CDimSymUitity::AngValToStr(value, &length, text);
    default:
        return ValueText::SeStrCre(value, form.data() + 1, text);
    }
}

std::wstring widen(std::string_view text) {
    const std::size_t mark = text.find(kAngleMark);
    std::wstring wide(text.begin(), text.begin() + std::min(mark, text.size()));
    if (mark != std::string_view::npos) {
        wide += kDegreeSign;
    }
    return wide;
}

} // namespace

std::optional<std::wstring> valueText(const Input& input) {
    const double value = input.numbers().empty() ? 0 : input.numbers().front();
    char* text = nullptr;
    const int status = write(value, input.integers(), &text);
    const std::unique_ptr<char[]> owned(text);
    return status == 0 && text != nullptr ? std::optional(widen(text)) : std::nullopt;
}

} // namespace web
