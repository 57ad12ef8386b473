#include "host/drawing/projection.h"

namespace host {
namespace {

Vec2 row(const Matrix& view, std::size_t i) { return {view[i * 4], view[i * 4 + 1]}; }

/// What the linear part of `view` makes of row `i` of a plane.
Vec2 carried(const ANK_MTX32& plane, int i, const Matrix& view) {
    return static_cast<double>(plane.m[i][0]) * row(view, 0) +
           static_cast<double>(plane.m[i][1]) * row(view, 1) +
           static_cast<double>(plane.m[i][2]) * row(view, 2);
}

double screenScale(const Matrix& view) {
    return std::sqrt(view[0] * view[0] + view[4] * view[4] + view[8] * view[8]);
}

} // namespace

Projection::Projection(const Matrix& view)
    : x_(row(view, 0)), y_(row(view, 1)), z_(row(view, 2)), origin_(row(view, 3)),
      scale_(screenScale(view)) {}

Projection::Projection(const ANK_MTX32& plane, const Matrix& view)
    : x_(carried(plane, 0, view)), y_(carried(plane, 1, view)), z_(carried(plane, 2, view)),
      origin_(carried(plane, 3, view) + row(view, 3)), scale_(screenScale(view)) {}

Vec2 Projection::point(const Vec3& p) const { return offset(p) + origin_; }

Vec2 Projection::offset(const Vec3& v) const { return v[0] * x_ + v[1] * y_ + v[2] * z_; }

} // namespace host
