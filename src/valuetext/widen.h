// Narrow value text as wide text.
#pragma once

#include <string>

#include "valuetext/shorttext.h"

namespace dorvale {

/// Appends a value's text, read in the system's code page.
void appendWidened(std::wstring& line, const ShortText& text);

} // namespace dorvale
