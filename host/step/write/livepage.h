/// @file
/// The live viewer's page with a part, its dimensions and the report in it.
#pragma once

#include <string>

#include "host/step/write/report.h"

namespace host::step {

/// @param viewer the page that `./dev viewer` builds. Throws `StepError` where it is another file.
std::string livePageOf(const Drawing& drawing, const Body& body, const std::string& viewer);

} // namespace host::step
