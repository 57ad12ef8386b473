/// @file
/// Building the annotation of one recipe.
#pragma once

#include "web/binding/recipes.h"
#include "web/binding/results.h"

namespace web {

/// Builds the next of the recipes and appends it to the words. Its rows begin with integers:
///
///     what the viewer sets     bits: 1 the type, 2 the display flag, 4 the screen-parallel flag;
///                              then the value of each that is set
///     how it is finished       bits of `Finish`; with bits, the number of the label's lines, which
///                              are the next texts, and the numbers of arrow and gap, if any
///     the number of calls      then for each its place in the table, and its own rows
///
/// The words begin with -1, or with the line of a label that cannot be, and why not.
void build(Recipes& recipes, Words& words);

} // namespace web
