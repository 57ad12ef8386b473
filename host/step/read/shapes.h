/// @file
/// Faces and edges of a part as records.
#pragma once

#include <unordered_map>

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>

#include "host/step/records.h"

namespace host::step {

Edge edgeRecord(const TopoDS_Edge& shape);
Face faceRecord(const TopoDS_Face& shape);

/// Where the faces, edges and vertices of a file stand in the finished part: each at its first
/// place.
class Places {
public:
    explicit Places(const TopoDS_Shape& whole);

    /// Adds what a shape of the file holds to what a dimension names.
    void addTo(Feature& feature, const TopoDS_Shape& shape, int entity) const;
    /// The plane faces.
    std::vector<Face> planes() const;
    int parts() const { return parts_; }

private:
    struct Place {
        TopoDS_Shape shape;
        int part = 0;
    };
    void add(const TopoDS_Shape& part, bool outsideSolids);
    Place placeOf(const TopoDS_Shape& shape) const;

    TopoDS_Shape whole_;
    /// By the body that all places of a shape share.
    std::unordered_map<const void*, Place> first_;
    int parts_ = 0;
};

/// A few points that reach as far as the shape does, in every direction.
std::vector<Vec3> hullOf(const TopoDS_Shape& shape);

} // namespace host::step
