/// @file
/// The views that have a name.
#pragma once

#include <optional>
#include <string_view>

#include "host/geometry/vectors.h"

namespace host {

/// The view of a name: `top`, `front`, `right`, `bottom`, `back`, `left` or `iso`.
std::optional<Matrix> standardView(std::string_view name);

} // namespace host
