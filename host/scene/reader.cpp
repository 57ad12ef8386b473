#include "host/scene/reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <sstream>

#include "host/system/spelling.h"
#include "host/system/utf8.h"

namespace host {
namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 64;
constexpr double kLargestNumber = 1e9;

/// `line 3, column 14`, counted from 1; columns in bytes.
std::string lineAndColumn(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;
    return "line " + std::to_string(lines + 1) + ", column " +
           std::to_string(position - lineStart + 1);
}

/// What the parser expected, without its own account of where and what it last read.
std::string reason(const std::string& message) {
    const std::size_t start = message.find(" - ");
    const std::size_t read = message.find("; last read");
    if (start == std::string::npos) {
        return "not JSON";
    }
    std::string reason = "not JSON: " + message.substr(start + 3, read - start - 3);
    const std::size_t expected = message.find("; expected", start);
    if (read != std::string::npos && expected != std::string::npos && expected > read) {
        reason += message.substr(expected);
    }
    return reason;
}

std::string kindOf(const Json& value) {
    switch (value.type()) {
    case Json::value_t::null:
        return "null";
    case Json::value_t::boolean:
        return value.get<bool>() ? "true" : "false";
    case Json::value_t::string:
        return "a text";
    case Json::value_t::array:
        return "a list";
    case Json::value_t::object:
        return "an object";
    default:
        return "a number";
    }
}

std::string listOf(std::size_t count) {
    return count == 1 ? "1 value" : std::to_string(count) + " values";
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::string echoed(const std::string& name) {
    constexpr std::size_t kLongest = 40;
    std::string result;
    for (const char c : name.substr(0, kLongest)) {
        result += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c;
    }
    while (findInvalidUtf8(result)) {
        result.pop_back();
    }
    return '"' + result + (name.size() > kLongest ? "...\"" : "\"");
}

Json parseJson(std::string_view text) {
    if (const auto invalid = findInvalidUtf8(text)) {
        throw SceneError(lineAndColumn(text, *invalid) + ": not UTF-8");
    }
    const auto boundDepth = [](int depth, Json::parse_event_t event, Json&) {
        const bool opens =
            event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
        if (opens && depth >= kDeepest) {
            throw SceneError("nested more than " + std::to_string(kDeepest) + " levels deep");
        }
        return true;
    };
    try {
        return Json::parse(text.begin(), text.end(), boundDepth);
    } catch (const Json::parse_error& error) {
        const std::size_t position = std::min(error.byte > 0 ? error.byte - 1 : 0, text.size());
        throw SceneError(lineAndColumn(text, position) + ": " + reason(error.what()));
    } catch (const Json::out_of_range&) {
        throw SceneError("not JSON: a number is too large");
    }
}

void Value::fail(const std::string& what) const {
    throw SceneError(path_.empty() ? what : path_ + ": " + what);
}

double Value::number() const {
    if (!json_->is_number()) {
        fail("expected a number, got " + kindOf(*json_));
    }
    const double number = json_->get<double>();
    if (!(std::abs(number) <= kLargestNumber)) {
        fail("expected a number of at most 1e9 in size");
    }
    return number;
}

int Value::integer() const {
    if (!json_->is_number_integer()) {
        fail("expected a whole number, got " +
             (json_->is_number() ? "one with decimals" : kindOf(*json_)));
    }
    const auto number = json_->get<std::int64_t>();
    const bool wraps = json_->is_number_unsigned() && number < 0;
    if (wraps || number < std::numeric_limits<int>::min() ||
        number > std::numeric_limits<int>::max()) {
        fail("expected a whole number of 32 bits");
    }
    return static_cast<int>(number);
}

bool Value::boolean() const {
    if (!json_->is_boolean()) {
        fail("expected true or false, got " + kindOf(*json_));
    }
    return json_->get<bool>();
}

const std::string& Value::text() const {
    if (!json_->is_string()) {
        fail("expected a text, got " + kindOf(*json_));
    }
    return json_->get_ref<const std::string&>();
}

std::vector<Value> Value::items() const {
    if (!json_->is_array()) {
        fail("expected a list, got " + kindOf(*json_));
    }
    std::vector<Value> items;
    items.reserve(json_->size());
    for (const Json& item : *json_) {
        items.emplace_back(item, path_ + '[' + std::to_string(items.size()) + ']');
    }
    return items;
}

Vec3 Value::vector() const {
    if (!json_->is_array()) {
        fail("expected 3 numbers, got " + kindOf(*json_));
    }
    if (json_->size() != 3) {
        fail("expected 3 numbers, got " + listOf(json_->size()));
    }
    const std::vector<Value> numbers = items();
    return {numbers[0].number(), numbers[1].number(), numbers[2].number()};
}

unsigned Value::color() const {
    const std::string& name = text();
    const bool isHex =
        name.size() == 7 && name[0] == '#' &&
        std::all_of(name.begin() + 1, name.end(), [](char c) { return hexDigit(c) >= 0; });
    if (!isHex) {
        fail("expected a colour such as \"#ffcc00\"");
    }
    const auto channel = [&name](std::size_t i) {
        return static_cast<unsigned>(hexDigit(name[i]) * 16 + hexDigit(name[i + 1]));
    };
    return channel(1) | channel(3) << 8 | channel(5) << 16;
}

Object::Object(Value value) : value_(std::move(value)) {
    if (!value_.json().is_object()) {
        value_.fail("expected an object, got " + kindOf(value_.json()));
    }
}

std::optional<Value> Object::find(const std::string& name) {
    known_.insert(name);
    const auto member = value_.json().find(name);
    if (member == value_.json().end()) {
        return std::nullopt;
    }
    return Value(*member, value_.path().empty() ? name : value_.path() + '.' + name);
}

Value Object::at(const std::string& name) {
    if (auto member = find(name)) {
        return *std::move(member);
    }
    // A member that nobody has asked for may be this one, misspelt.
    std::vector<std::string> unknown;
    for (const auto& present : value_.json().items()) {
        if (!known_.contains(present.key())) {
            unknown.push_back(present.key());
        }
    }
    const std::string misspelt = nearestName(name, unknown);
    value_.fail('"' + name + "\" is missing" +
                (misspelt.empty() ? "" : "; " + echoed(misspelt) + " may be meant for it"));
}

void Object::refuseOthers() const {
    for (const auto& member : value_.json().items()) {
        if (!known_.contains(member.key())) {
            value_.fail(echoed(member.key()) + " is not known here" +
                        hint(member.key(), {known_.begin(), known_.end()}));
        }
    }
}

} // namespace host
