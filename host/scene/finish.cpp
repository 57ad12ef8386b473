#include "host/scene/finish.h"

#include "host/finish/label.h"
#include "host/system/utf8.h"

namespace host {
namespace {

ArrowLength readArrow(const Value& value) {
    constexpr const char* kExpected = "expected \"fit\" or a length above 0";
    if (value.json().is_string()) {
        if (value.text() != "fit") {
            value.fail(kExpected);
        }
        return {true, 0};
    }
    if (!value.json().is_number() || !(value.number() > 0)) {
        value.fail(kExpected);
    }
    return {false, value.number()};
}

double readDistance(const Value& value) {
    const double distance = value.number();
    if (distance < 0) {
        value.fail("expected a distance of at least 0");
    }
    return distance;
}

std::wstring readLabelLine(const Value& value) {
    std::wstring line = toWide(value.text());
    if (line.empty()) {
        value.fail("expected a text that is not empty");
    }
    if (const auto mistake = mistakeInLabel(line)) {
        value.fail(std::string(*mistake));
    }
    return line;
}

/// A text or a list of lines.
std::vector<std::wstring> readLabel(const Value& value) {
    if (!value.json().is_array()) {
        return {readLabelLine(value)};
    }
    std::vector<std::wstring> lines;
    for (const Value& line : value.items()) {
        lines.push_back(readLabelLine(line));
    }
    if (lines.empty()) {
        value.fail("expected at least one line");
    }
    return lines;
}

} // namespace

FinishOptions readFinish(const Value& value, const FinishOptions& inherited) {
    if (value.json().is_null()) {
        return {};
    }
    FinishOptions options = inherited;
    Object members(value);
    if (const auto arrow = members.find("arrow")) {
        options.arrow = readArrow(*arrow);
    }
    if (const auto gap = members.find("gap")) {
        options.gap = readDistance(*gap);
    }
    if (const auto label = members.find("label")) {
        options.label = readLabel(*label);
    }
    if (const auto readable = members.find("readable")) {
        options.readable = readable->boolean();
    }
    if (const auto spacing = members.find("spacing")) {
        options.spacing = readDistance(*spacing);
    }
    members.refuseOthers();
    return options;
}

} // namespace host
