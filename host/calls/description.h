/// @file
/// What a call takes and hands back, found by calling it: nobody writes it down.
#pragma once

#include <string_view>
#include <vector>

#include "host/calls/calls.h"

namespace host {

enum class Kind {
    Number,
    Integer,
    Boolean,
    Color,
    Text,
    TextLines,
    Direction,
    Point,
    Points,
    EdgeShape,
    View
};

/// A member that a call asks for.
struct Member {
    const char* name = "";
    Kind kind = Kind::Number;
    /// As the call asks where nothing is given.
    Need need = kAlways;
    /// Of an integer or a boolean that may be missing.
    int otherwise = 0;
    /// How many points a list has, or the shapes that may stand for an edge.
    unsigned count = 0;
};

/// One more thing that a call hands back.
struct HandedBackMember {
    const char* name;
    /// Which one of `HandedBack::Value`.
    std::size_t type;
};

struct Description {
    const char* call = "";
    bool changes = false;
    /// In the order in which they are asked for.
    std::vector<Member> members;
    bool hasStatus = false;
    bool hasLocate = false;
    std::vector<HandedBackMember> handedBack;
    Quantity measures = Quantity::None;
};

Description describe(const Call& call);

} // namespace host
