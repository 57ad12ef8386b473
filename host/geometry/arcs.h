/// @file
/// Arcs of a finished annotation.
#pragma once

#include <cmath>

#include <dorvale/datamanager.h>

#include "host/geometry/vectors.h"

namespace host {

/// The signed turn of an arc from its start to its end, for parameters that differ. An arc runs
/// counter-clockwise about its normal, so that its parameter falls where the normal points down.
inline double sweepOf(const Ank_Ellipse& arc) {
    float start = 0;
    float end = 0;
    arc.GetParameter(start, end);
    double sweep = std::fmod(static_cast<double>(end) - static_cast<double>(start), kFullTurn);
    if (arc.GetNormal().z < 0) {
        sweep -= sweep < 0 ? 0 : kFullTurn;
    } else {
        sweep += sweep > 0 ? 0 : kFullTurn;
    }
    return sweep;
}

} // namespace host
