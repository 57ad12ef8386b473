/// @file
/// A part's faces as triangles, and its edges.
#pragma once

#include <TopoDS_Shape.hxx>

#include "host/step/records.h"

namespace host::step {

/// Coarser where there would be more triangles than a page carries easily. The mesh stays with the
/// shape.
Body bodyOf(const TopoDS_Shape& shape);

} // namespace host::step
