/// @file
/// The lines of a part as seen from one side, the hidden ones told apart.
#pragma once

#include <TopoDS_Shape.hxx>

#include "host/step/records.h"

namespace host::step {

/// Exactly, by OCCT's removal of hidden lines.
Picture exactPicture(const TopoDS_Shape& shape, const Vec3& right, const Vec3& up);

/// From the part's mesh, in a fraction of the time.
Picture meshPicture(const TopoDS_Shape& shape, const Vec3& right, const Vec3& up);

} // namespace host::step
