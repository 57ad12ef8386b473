/// @file
/// Text between UTF-8, which scenes and output files use, and the library's wide strings.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Where the first byte that is not UTF-8 stands, if there is one.
std::optional<std::size_t> findInvalidUtf8(std::string_view text);

/// UTF-16 where `wchar_t` has two bytes, else one code point per character. The text is valid.
std::wstring toWide(std::string_view text);

/// Lone surrogates and values past the last code point become U+FFFD.
std::string toUtf8(std::wstring_view text);

} // namespace host
