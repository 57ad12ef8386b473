/// @file
/// Drawing an annotation's text blocks: their lines and their frames.
#pragma once

#include <dorvale/datamanager.h>

#include "host/drawing/projection.h"
#include "host/drawing/svg.h"

namespace host {

/// By what widths the extent of texts and their frames is found: those of the drawing's own font,
/// which the picture then keeps whatever font it is shown in, or what is usual.
enum class Widths { OfAnyFont, OfDrawingFont };

/// @param toPaper from the annotation's plane
/// @param screenParallel whether the lines stand upright on paper or follow their own axes
void drawTextBlock(Svg& svg, const Ank_ComText& block, const Projection& toPaper,
                   bool screenParallel, Widths widths);

} // namespace host
