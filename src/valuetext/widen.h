// Narrow value text as wide text.
#pragma once

#include <array>
#include <string_view>

#include "valuetext/shorttext.h"

namespace dorvale {

/// A value's wide text on the stack.
struct WideText {
    std::array<wchar_t, ShortText::kCapacity> characters;
    std::size_t size;

    std::wstring_view view() const { return {characters.data(), size}; }
};

/// A value's text, read in the system's code page.
WideText widened(const ShortText& text);

} // namespace dorvale
