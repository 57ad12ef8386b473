#include "valuetext/valueline.h"

#include "valuetext/valuetext.h"
#include "valuetext/widen.h"

namespace dorvale {

namespace {

std::wstring widened(std::wstring_view prefix, const ShortText& text) {
    std::wstring line;
    line.reserve(prefix.size() + text.size());
    line = prefix;
    appendWidened(line, text);
    return line;
}

} // namespace

std::optional<std::wstring> lengthLine(double length, std::wstring_view prefix) {
    if (length < 0.0) {
        return std::nullopt;
    }
    return widened(prefix, lengthText(length));
}

std::wstring arcLengthLine(double length) {
    return widened({}, *formattedText(length, kArcLengthFormat));
}

std::wstring angleLine(double degrees) {
    constexpr wchar_t kDegreeSign = L'\u00B0';
    const ShortText text = angleText(degrees);
    std::wstring line = widened({}, text);
    // The narrow text's mark is two bytes, and one or two characters; the degree sign takes its
    // place either way.
    line.resize(text.size() - kAngleMark.size());
    line += kDegreeSign;
    return line;
}

} // namespace dorvale
