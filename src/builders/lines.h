// Extension lines and special lines.
#pragma once

#include "builders/curves.h"
#include "model/values.h"

namespace dorvale {

/// An extension line along the points, whatever they are: an empty list and equal points included.
std::unique_ptr<Ank_Extensionline>
makeExtensionLine(const Points& points, bool display,
                  AnkCurveDispTypeEnum dispType = kDimensionDisplay);

/// Null where the points make no polyline.
std::unique_ptr<Ank_SpecialLine> makeSpecialLine(const Points& points);

/// A special line along an arc, whose usage stays unset.
std::unique_ptr<Ank_SpecialLine> makeArcSpecialLine(const ArcShape& shape);

} // namespace dorvale
