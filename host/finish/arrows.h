/// @file
/// The length of arrow heads.
#pragma once

#include <dorvale/datamanager.h>

namespace host {

/// Gives every arrow head of an annotation this length, and a third of it as its width. On an arc
/// the head follows the chord of that length.
void setArrows(Ank_PMI& pmi, double length);

/// The length at which the heads of an annotation fit it: 0.96 of its text's height, a third of the
/// shortest leader with a head, or a third of the distance between two tips, whichever is least.
double fittingArrow(const Ank_PMI& pmi, double textHeight);

} // namespace host
