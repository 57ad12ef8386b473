/// @file
/// Where everything stands: which view, which tier, which side. No text stands over another one or
/// over the part.
#pragma once

#include "host/step/place/sheet.h"

namespace host::step {

/// What is to be placed in one view: a dimension's number and what was derived of it.
struct Item {
    std::size_t dimension = 0;
    const Outcome* outcome = nullptr;
};

/// Every view with its annotations.
std::vector<Sheet> place(const std::vector<Outcome>& outcomes, const std::vector<Vec3>& hull);

// What `place` does in a view, in this order.

/// Lengths in tiers outside the part, the shortest innermost.
void placeDistances(Sheet& sheet, const std::vector<Item>& items);
/// Angles, and lengths of arcs, outside the part and as near to it as there is room.
void placeAngles(Sheet& sheet, const std::vector<Item>& items);
/// Radii, diameters and notes: those of the right half in a column on the right, those of the left
/// half in a row above, where their leaders cross the least.
void placeCallouts(Sheet& sheet, const std::vector<Item>& items);
/// What names no face, at the part's corner.
void placeCornerNotes(Sheet& sheet, const std::vector<Item>& items);

/// Of the text's foot from its dimension line, as a part of the text's height.
inline constexpr double kTextGap = 0.45;
} // namespace host::step
