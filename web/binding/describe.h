/// @file
/// The table of calls as JavaScript learns it when the module is loaded.
#pragma once

#include "web/binding/results.h"

namespace web {

/// Appends the calls: their names and members, and what they hand back. web/dorvale/src/results.ts
/// reads it.
void describeCalls(Words& words);

} // namespace web
