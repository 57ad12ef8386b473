/// @file
/// The library's entry points by their names, and what each gives back.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include <dorvale/dorvale.h>

#include "host/calls/arguments.h"

namespace host {

/// A line that a call has moved.
struct MovedLine {
    ANK_PNT32 start;
    ANK_PNT32 end;
};

using FourPoints = std::array<Vec3, 4>;

/// One more thing that a call hands back, by name.
struct HandedBack {
    using Value = std::variant<int, std::uint32_t, Vec3, FourPoints, MovedLine>;

    const char* name;
    Value value;
};

enum class Quantity { None, Length, Angle };

/// What a call measured: the number that its value text shows.
struct Measured {
    Quantity quantity = Quantity::None;
    /// Lengths in model units, angles in degrees. Not a number where there is nothing to measure.
    double value = 0;
};

/// What one call gives back beside the annotation.
struct CallResult {
    const char* call = "";
    /// Of calls that have one.
    std::optional<int> status;
    /// The placement record afterwards, its point in plane coordinates.
    std::optional<_ank_locate> locate;
    std::vector<HandedBack> others;
    Measured measured;
    /// Whether its value stands centred on the dimension line, by the library's estimate.
    bool centersText = false;
    /// Lines that a call leaves to its caller to draw, in model coordinates.
    std::vector<LineEdge> callerLines;

    void handBack(const char* name, const HandedBack::Value& value) {
        constexpr std::size_t kMost = 6;
        others.reserve(kMost);
        others.push_back({name, value});
    }
};

struct Call {
    const char* name = "";
    /// Reads its arguments, makes the call and keeps what it handed back.
    void (*make)(Arguments&, Ank_PMI&, CallResult&) = nullptr;
    /// It works on an annotation that another call has made.
    bool changes = false;
};

/// Every call that makes or changes an annotation.
std::span<const Call> calls();

/// Null where there is no call of this name.
const Call* findCall(std::string_view name);

} // namespace host
