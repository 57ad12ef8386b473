// What both angle generators do alike.
#pragma once

#include <numbers>

#include "generators/assembly.h"
#include "model/values.h"
#include "valuetext/valueline.h"

namespace dorvale {

inline double inDegrees(double radians) { return radians * 180.0 / std::numbers::pi; }

/// The smaller of an angle and what it lacks to a full turn.
inline double foldedDegrees(double degrees) { return degrees > 180.0 ? 360.0 - degrees : degrees; }

/// The text of an angle; the mode 1 folds a reflex one.
inline std::wstring angleTextLine(double degrees, int angleMode) {
    return angleLine(angleMode == 1 ? foldedDegrees(degrees) : degrees);
}

inline void setAngleFlags(Ank_PMI& pmi) {
    pmi.SetType(kAngleDimension);
    pmi.SetParallelScreen(true);
    pmi.SetDisplay(true);
    pmi.SetDim(3);
}

} // namespace dorvale
