#include "valuetext/valueline.h"

#include <algorithm>

#include "valuetext/valuetext.h"
#include "valuetext/widen.h"

namespace dorvale {

std::optional<std::wstring> lengthLine(double length, std::wstring_view prefix) {
    if (length < 0.0) {
        return std::nullopt;
    }
    const ShortText text = lengthText(length);
    std::wstring line;
    line.reserve(prefix.size() + text.size());
    line += prefix;
    appendWidened(line, text);
    return line;
}

std::wstring arcLengthLine(double length) {
    std::wstring line;
    appendWidened(line, *formattedText(length, kArcLengthFormat));
    return line;
}

std::wstring angleLine(double degrees) {
    // The narrow text's mark is two bytes, and one or two characters; the degree sign takes its
    // place either way.
    const ShortText text = angleText(degrees);
    const std::size_t digits = text.size() - kAngleMark.size();
    std::wstring line;
    line.reserve(digits + 1);
    appendWidened(line, text);
    line.resize(std::min(line.size(), digits));
    line += L'\u00B0';
    return line;
}

} // namespace dorvale
