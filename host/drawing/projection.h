/// @file
/// Where the points of the model come to stand on paper.
#pragma once

#include <dorvale/datamanager.h>

#include "host/geometry/vectors.h"

namespace host {

/// A map from a space of three dimensions onto paper: parallel, with the view's scale.
class Projection {
public:
    /// From the model.
    explicit Projection(const Matrix& view);
    /// From an annotation's plane, through the model.
    Projection(const ANK_MTX32& plane, const Matrix& view);

    Vec2 point(const Vec3& p) const;
    /// A direction or an offset: the translation does not count.
    Vec2 offset(const Vec3& v) const;
    /// How long a length across the line of sight becomes.
    double scale() const { return scale_; }

private:
    Vec2 x_;
    Vec2 y_;
    Vec2 z_;
    Vec2 origin_;
    double scale_;
};

} // namespace host
