/// @file
/// Value text for its own sake.
#pragma once

#include <optional>
#include <string>

#include "web/binding/recipes.h"

namespace web {

/// The text of the input's first number. Its first integer says what it is of: 0 a length, 1 an
/// angle, 2 a value in the format of the next six integers. Nothing where the library has no text.
std::optional<std::wstring> valueText(const Input& input);

} // namespace web
