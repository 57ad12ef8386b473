/// @file
/// A dimension's value as text: its nominal, unit, tolerance and marks.
#pragma once

#include <string>
#include <vector>

#include "host/step/records.h"

namespace host::step {

/// With that many decimals; trailing zeros stay.
std::string fixedText(double value, int decimals);

/// The decimals of the file, or as few as show the nominal.
int decimalsOf(const Dimension& dimension);

/// The lines that stand on the drawing: `4X ⌀7.14 ±0.2`, `R5`, `(60°)`, or two limits.
std::vector<std::string> valueText(const Dimension& dimension, int places);

/// The lines on one, for a table.
std::string oneLine(const std::vector<std::string>& lines);

} // namespace host::step
