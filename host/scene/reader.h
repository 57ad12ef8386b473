/// @file
/// Reading a scene's JSON. Every value knows where it stands, so that a mistake in a scene is
/// reported by place: `annotations[3].points: expected 6 points of 3 numbers, got 5`.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/geometry/vectors.h"

namespace host {

/// What is wrong with a scene, and where: one line.
class SceneError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A name between quotation marks as a message may show it: a name of a scene can hold anything.
std::string echoed(const std::string& name);

/// Parses a scene's text: valid UTF-8, nested at most 64 levels deep.
nlohmann::json parseJson(std::string_view text);

/// A value that stands somewhere in a scene. Refers to the JSON that it was made from.
class Value {
public:
    Value(const nlohmann::json& json, std::string path) : json_(&json), path_(std::move(path)) {}

    const nlohmann::json& json() const { return *json_; }
    const std::string& path() const { return path_; }
    [[noreturn]] void fail(const std::string& what) const;

    /// Finite, and at most 1e9 in size.
    double number() const;
    int integer() const;
    bool boolean() const;
    const std::string& text() const;
    /// The items of a list.
    std::vector<Value> items() const;
    /// Exactly 3 numbers.
    Vec3 vector() const;
    /// `#rrggbb`, as red in the lowest byte, then green, then blue.
    unsigned color() const;

private:
    const nlohmann::json* json_;
    std::string path_;
};

/// A value with named members, each of which somebody must ask for.
class Object {
public:
    explicit Object(Value value);

    const Value& value() const { return value_; }
    /// Whether the member is there; asking counts as reading it.
    std::optional<Value> find(const std::string& name);
    /// The member, which must be there.
    Value at(const std::string& name);
    /// Refuses members that nobody has asked for.
    void refuseOthers() const;

private:
    Value value_;
    std::set<std::string> known_;
};

} // namespace host
