/// @file
/// Drawing an annotation's text blocks: their lines and their frames.
#pragma once

#include <dorvale/datamanager.h>

#include "host/drawing/projection.h"
#include "host/drawing/svg.h"

namespace host {

/// @param toPaper from the annotation's plane
/// @param screenParallel whether the lines stand upright on paper or follow their own axes
void drawTextBlock(Svg& svg, const Ank_ComText& block, const Projection& toPaper,
                   bool screenParallel);

} // namespace host
