// The line of text that shows a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dorvale {

/// A length after a prefix; none for a negative one.
std::optional<std::wstring> lengthLine(double length, std::wstring_view prefix = {});
/// The length of an arc.
std::wstring arcLengthLine(double length);
/// An angle in degrees with its degree sign.
std::wstring angleLine(double degrees);

} // namespace dorvale
