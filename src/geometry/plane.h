// The plane that an annotation lies in.
#pragma once

#include <dorvale/dorvale.h>

#include "geometry/lines.h"
#include "geometry/matrix.h"

namespace dorvale {

/// The two axes of a view that annotations ask for. A missing view has zeros, which turn nothing.
struct View {
    Vec3 right;
    Vec3 towardsViewer;

    /// @param matrix 16 doubles, or null
    static View fromMatrix(const double* matrix);
};

class AnnotationPlane {
public:
    /// The plane through an origin along two unit axes; its normal is X x Y.
    AnnotationPlane(Vec3 origin, Vec3 xAxis, Vec3 yAxis)
        : AnnotationPlane({origin, cross(xAxis, yAxis), xAxis}, yAxis) {}
    /// A section plane through an origin. The X axis runs towards a point of the plane.
    static AnnotationPlane ofSection(Vec3 normal, Vec3 origin, Vec3 xPoint);

    Vec3 origin() const { return frame_.origin; }
    Vec3 xAxis() const { return frame_.x; }
    Vec3 yAxis() const { return y_; }
    Vec3 normal() const { return frame_.z; }
    Matrix toModelMatrix() const { return frame_.modelMatrix(); }
    /// The plane-to-model matrix, as an annotation takes it.
    ANK_MTX32 matrix32() const;

    Vec3 toPlane(Vec3 pointInModel) const { return frame_.toLocal(pointInModel); }
    Segment toPlane(const Segment& s) const { return {toPlane(s.start), toPlane(s.end)}; }
    Vec3 toModel(Vec3 pointInPlane) const { return frame_.toModel(pointInPlane); }
    /// A direction of the plane in the model.
    Vec3 directionInModel(Vec3 directionInPlane) const {
        return toModel(directionInPlane) - toModel(Vec3{});
    }

    /// Moves a placement along its viewing ray into the plane and returns it in plane coordinates,
    /// which the record holds afterwards. It stays off the plane where the ray never meets it.
    Vec3 placeAlongView(_ank_locate& locate) const;
    /// The same, dropped perpendicularly into the plane where the ray never meets it.
    Vec3 place(_ank_locate& locate) const;

private:
    AnnotationPlane(const Frame& frame, Vec3 yAxis)
        : frame_(frame), y_(yAxis), placementNormal_(orZero(unitNormal(frame.x, yAxis))) {}
    Vec3 recordInPlane(_ank_locate& locate) const;

    Frame frame_;
    /// The Y axis as given; the frame's own is square to its X axis and its normal.
    Vec3 y_;
    /// Of the plane that placements are brought into: square to both axes.
    Vec3 placementNormal_;
};

} // namespace dorvale
