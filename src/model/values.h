// The values of the annotation model's enumerations. A viewer's own model may name its enumerators
// as it likes: what counts is the number that each has.
#pragma once

#include <dorvale/datamanager.h>

namespace dorvale {

inline constexpr auto kPolylineCurve = static_cast<AnkCurveTypeEnum>(1);
inline constexpr auto kArcCurve = static_cast<AnkCurveTypeEnum>(2);
inline constexpr auto kLineCurve = static_cast<AnkCurveTypeEnum>(3);

inline constexpr auto kLeaderCurve = static_cast<AnkCurveUsageEnum>(1);
inline constexpr auto kExtensionLineCurve = static_cast<AnkCurveUsageEnum>(3);
inline constexpr auto kSpecialLineCurve = static_cast<AnkCurveUsageEnum>(5);

/// Special lines made from points.
inline constexpr auto kSpecialLineDisplay = static_cast<AnkCurveDispTypeEnum>(1);
/// Arc leaders, extension lines and special lines made from arcs.
inline constexpr auto kDimensionDisplay = static_cast<AnkCurveDispTypeEnum>(2);

inline constexpr auto kStraightLeader = static_cast<AnkLeaderTypeEnum>(1);
inline constexpr auto kArcLeader = static_cast<AnkLeaderTypeEnum>(2);

inline constexpr auto kNoTerminator = static_cast<AnkTermTypeEnum>(0);
inline constexpr auto kArrow = static_cast<AnkTermTypeEnum>(4);

inline constexpr auto kExtensionLine = static_cast<AnkExtensTypeEnum>(1);

inline constexpr auto kLineOfPoints = static_cast<AnkSpecLineUsageEnum>(0);

inline constexpr auto kAnchoredAtLocation = static_cast<AnkAnchorTypeEnum>(6);

inline constexpr auto kExtraNoteLine = static_cast<AnkTextTypeEnum>(7);
inline constexpr auto kMarkedNoteLine = static_cast<AnkTextTypeEnum>(26);

inline constexpr auto kParallelDimension = static_cast<AnkPMITypeEnum>(1);
inline constexpr auto kAngleDimension = static_cast<AnkPMITypeEnum>(2);
inline constexpr auto kDiameterDimension = static_cast<AnkPMITypeEnum>(4);
inline constexpr auto kRadiusDimension = static_cast<AnkPMITypeEnum>(6);
inline constexpr auto kLinearDimension = static_cast<AnkPMITypeEnum>(10);
inline constexpr auto kClipArcDimension = static_cast<AnkPMITypeEnum>(28);

} // namespace dorvale
