/// @file
/// How the model is looked at, and where its points come to stand on paper.
#pragma once

#include <optional>
#include <string_view>

#include <dorvale/datamanager.h>

#include "geometry.h"

namespace host {

inline Vec3 vectorOf(const ANK_PNT32& p) { return {p.x, p.y, p.z}; }
inline Vec3 vectorOf(const ANK_DIR32& d) { return {d.x, d.y, d.z}; }

/// The view of a name: `front`, `top`, `right` or `iso`.
std::optional<Matrix> standardView(std::string_view name);

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
