#include "host/step/read/smooth.h"

#include <algorithm>
#include <iterator>

#include <BRepAdaptor_Curve2d.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Vec.hxx>

namespace host::step {
namespace {

/// Faces whose normals differ by less, in radians, run into each other.
constexpr double kSmooth = 2e-3;
/// Where along an edge they are compared.
constexpr double kPlaces[] = {0.1, 0.5, 0.9};

/// Out of the material, at a part of the edge's length; of no length where the face has none.
gp_Vec normalAt(const TopoDS_Edge& edge, const TopoDS_Face& face, double part) {
    const BRepAdaptor_Curve2d curve(edge, face);
    const double first = curve.FirstParameter();
    const gp_Pnt2d at = curve.Value(first + part * (curve.LastParameter() - first));
    gp_Pnt point;
    gp_Vec u;
    gp_Vec v;
    BRepAdaptor_Surface(face, Standard_False).D1(at.X(), at.Y(), point, u, v);
    gp_Vec normal = u.Crossed(v);
    if (face.Orientation() == TopAbs_REVERSED) {
        normal.Reverse();
    }
    return normal;
}

bool isSmooth(const TopoDS_Edge& edge, const TopoDS_Face& face1, const TopoDS_Face& face2) {
    return std::all_of(std::begin(kPlaces), std::end(kPlaces), [&](double part) {
        const gp_Vec normal1 = normalAt(edge, face1, part);
        const gp_Vec normal2 = normalAt(edge, face2, part);
        constexpr double kNoNormal = 1e-12;
        return !(normal1.Magnitude() < kNoNormal || normal2.Magnitude() < kNoNormal ||
                 normal1.Angle(normal2) > kSmooth);
    });
}

} // namespace

void markSmoothEdges(const TopoDS_Shape& shape) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOf;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOf);
    for (int i = 1; i <= facesOf.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(facesOf.FindKey(i));
        const TopTools_ListOfShape& faces = facesOf(i);
        if (faces.Extent() != 2 || BRep_Tool::Degenerated(edge)) {
            continue;
        }
        const TopoDS_Face& face1 = TopoDS::Face(faces.First());
        const TopoDS_Face& face2 = TopoDS::Face(faces.Last());
        if (isSmooth(edge, face1, face2)) {
            BRep_Builder().Continuity(edge, face1, face2, GeomAbs_G1);
        }
    }
}

} // namespace host::step
