/// @file
/// The table of calls as JavaScript learns it when the module is loaded.
#pragma once

#include <string>

namespace web {

/// A JSON list of calls: their names and members, and what they hand back.
std::wstring describeCalls();

} // namespace web
