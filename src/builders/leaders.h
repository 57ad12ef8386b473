// Leaders and their arrow heads.
#pragma once

#include "builders/curves.h"
#include "model/values.h"

namespace dorvale {

/// A leader along the points, its terminator at `tip`, pointing from the first point to the second.
/// Null where the points make no polyline.
std::unique_ptr<Ank_Leader> makeLeader(const Points& points, const ANK_PNT32& tip,
                                       AnkTermTypeEnum terminator);

/// A leader along an arc, without an arrow.
std::unique_ptr<Ank_Leader> makeArcLeader(std::unique_ptr<Ank_Ellipse> arc);

/// Puts an arrow on the start of a leader's arc, as long as the first chord that it is drawn with
/// and a third as wide. False, with nothing set, for an arc whose angles are equal.
bool setArcTerminator(Ank_Leader& leader, const DrawnArc& arc);

/// The same for every arc leader of a list; the first arc whose angles are equal ends the pass.
void setArcTerminators(const std::vector<Ank_Leader*>& leaders);

} // namespace dorvale
