/// @file
/// Where text stands beside its dimension line.
#pragma once

#include <optional>

#include <dorvale/datamanager.h>

#include "host/finish/block.h"

namespace host {

/// How a block has to move so that it stands off the annotation's leaders by `gap`; nothing for an
/// annotation without leaders.
///
///  - Text along a straight dimension line or tangent to an arc: its foot stands the gap away, on
///    the side to which the text stands up.
///  - Text at the end of a leader: beyond the end, its middle level with it; above or below the end
///    of a steep one.
///  - Any other text: beside the line, its nearest corner the gap away; outside an arc.
///
/// @param centered whether the call centres the text on its dimension line
std::optional<Vec2> moveOffLeaders(const Ank_PMI& pmi, const TextBlock& block, double gap,
                                   bool centered);

} // namespace host
