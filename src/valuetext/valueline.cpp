#include "valuetext/valueline.h"

#include "valuetext/valuetext.h"
#include "valuetext/widen.h"

namespace dorvale {

namespace {

std::wstring joined(std::wstring_view first, std::wstring_view second) {
    std::wstring line;
    line.reserve(first.size() + second.size());
    line += first;
    line += second;
    return line;
}

} // namespace

std::optional<std::wstring> lengthLine(double length, std::wstring_view prefix) {
    if (length < 0.0) {
        return std::nullopt;
    }
    return joined(prefix, widened(lengthText(length)).view());
}

std::wstring arcLengthLine(double length) {
    return std::wstring(widened(*formattedText(length, kArcLengthFormat)).view());
}

std::wstring angleLine(double degrees) {
    // The narrow text's mark is two bytes, and one or two characters; the degree sign takes its
    // place either way.
    const ShortText text = angleText(degrees);
    const WideText wide = widened(text);
    return joined(wide.view().substr(0, text.size() - kAngleMark.size()), L"\u00B0");
}

} // namespace dorvale
