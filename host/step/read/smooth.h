/// @file
/// Edges at which one face runs smoothly into the next.
#pragma once

#include <TopoDS_Shape.hxx>

namespace host::step {

/// Marks them, so that pictures have no line there. Files tell it of few of them, and OCCT's own
/// search leaves out those that its reader has marked as sharp.
void markSmoothEdges(const TopoDS_Shape& shape);

} // namespace host::step
