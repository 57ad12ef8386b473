#include "geometry/projection.h"

#include <cmath>
#include <numbers>

#include "geometry/definitionplane.h"
#include "geometry/single.h"

namespace dorvale {

namespace {

/// 2 degrees: how far the guide points stand from the start of an arc.
constexpr float kGuideAngle = 0.034906585F;
/// A chord that passes the centre no further than this does not tell the arc's side.
constexpr double kThroughCenter = 0.1;

/// Which way an arc runs from its start, in the model.
struct Course {
    double sweep = 0.0;
    /// From the guide point past the start to the end.
    double rest = 0.0;
    Vec3 guideAfter;
    Vec3 guideBefore;
};

Course courseOf(const Arc& arc) {
    const Vec3 toStart = (arc.start - arc.center) / arc.radius;
    const Vec3 toEnd = (arc.end - arc.center) / arc.radius;
    Course course;
    course.guideAfter = pointByAngle(arc.normal, toStart, kGuideAngle, arc.center, arc.radius);
    course.guideBefore = pointByAngle(arc.normal, toStart, -kGuideAngle, arc.center, arc.radius);
    const Vec3 toGuide = (course.guideAfter - arc.center) / arc.radius;
    course.sweep = orZero(angleAbout(arc.normal, toStart, toEnd));
    course.rest = orZero(angleAbout(arc.normal, toGuide, toEnd));
    return course;
}

/// The middle of an arc, in its plane: on the chord's side of the centre for a minor arc, away from
/// it for a major one. Where the chord passes too near to the centre to tell, a guide point stands
/// in for the start, so that a half circle's rounding decides nothing.
Vec3 middleOf(const AnnotationPlane& plane, const Arc& arc, const Course& course) {
    const Vec3 center = flat(plane.toPlane(arc.center));
    const Vec3 end = flat(plane.toPlane(arc.end));
    Foot foot = orZero(footOnLine(center, flat(plane.toPlane(arc.start)), end));
    bool major = course.sweep > std::numbers::pi;
    if (foot.distance < kThroughCenter) {
        major = course.rest >= std::numbers::pi;
        const Vec3 guide = major ? course.guideBefore : course.guideAfter;
        foot = orZero(footOnLine(center, flat(plane.toPlane(guide)), end));
    }
    const Vec3 towardsChord = orZero(unit(flat(foot.point - center)));
    return moved(plane.toPlane(arc.center), major ? -towardsChord : towardsChord, arc.radius);
}

float angleInPlane(Vec3 v) { return std::atan2(static_cast<float>(v.y), static_cast<float>(v.x)); }

} // namespace

Vec3 pointByAngle(Vec3 axis, Vec3 direction, float angle, Vec3 base, double distance) {
    return moved(base, rotated(direction, rotationAbout(axis, angle)), distance);
}

std::unique_ptr<Ank_Ellipse> arcInItsPlane(const Ank_Ellipse& ellipse, double* matrix) {
    const Arc arc = arcOf(&ellipse);
    if (!(arc.radius > 0.0)) {
        return nullptr;
    }
    const AnnotationPlane plane = planeOfArc(arc, Vec3{}).plane();
    const Vec3 center = plane.toPlane(arc.center);
    const Vec3 start = plane.toPlane(arc.start);
    const Vec3 end = plane.toPlane(arc.end);
    const Vec3 middle = middleOf(plane, arc, courseOf(arc));
    auto flattened = std::make_unique<Ank_Ellipse>(ellipse);
    flattened->SetParameter(angleInPlane(start - center), angleInPlane(end - center));
    flattened->SetCenterPoint(toPoint32(center));
    flattened->SetCoordiantePnt(toPoint32(start), toPoint32(end));
    flattened->SetNormal(toDirection32(orZero(normalOf(center, start, middle))));
    writeTo(matrix, plane.toModelMatrix());
    return flattened;
}

} // namespace dorvale
