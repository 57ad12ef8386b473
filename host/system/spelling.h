/// @file
/// What somebody who wrote a name may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The name among others that is at most 2 letters off (1 in a name of up to 4), and nearest; empty
/// where there is none. A letter is off that is missing, too many, another one, or in its
/// neighbour's place.
std::string nearestName(std::string_view name, const std::vector<std::string>& others);

/// `; "title" may be meant` where there is a name that near, or nothing.
std::string hint(std::string_view name, const std::vector<std::string>& others);

} // namespace host
