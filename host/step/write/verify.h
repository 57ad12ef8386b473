/// @file
/// What the library measures of the annotations that are to be drawn.
#pragma once

#include "host/step/place/sheet.h"
#include "host/step/records.h"

namespace host::step {

/// The number that the library's value text would show, in the dimension's unit; nothing for an
/// annotation that it leaves without a value.
std::optional<double> measuredByLibrary(const Annotation& annotation, const Sheet& sheet,
                                        const Model& model);

} // namespace host::step
