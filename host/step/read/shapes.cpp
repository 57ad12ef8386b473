#include "host/step/read/shapes.h"

#include <algorithm>
#include <cmath>

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <ElCLib.hxx>
#include <ElSLib.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Circ.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>

namespace host::step {
namespace {

/// Points along a curve that is not straight.
constexpr int kCurvePoints = 24;
/// Points across a surface in both directions, where its edges alone do not tell its reach.
constexpr int kSurfacePoints = 7;
constexpr double kFarthest = 1e9;

Vec3 vectorOf(const gp_Pnt& p) { return {p.X(), p.Y(), p.Z()}; }
Vec3 vectorOf(const gp_Dir& d) { return {d.X(), d.Y(), d.Z()}; }

bool isFinite(double first, double last) {
    return std::abs(first) < kFarthest && std::abs(last) < kFarthest;
}

void setCircle(const gp_Circ& circle, Edge& edge) {
    edge.kind = CurveKind::Circle;
    edge.centre = vectorOf(circle.Location());
    edge.radius = circle.Radius();
    edge.axis = vectorOf(circle.XAxis().Direction().Crossed(circle.YAxis().Direction()));
}

void samplePoints(const BRepAdaptor_Curve& curve, Edge& edge) {
    const int pieces = edge.kind == CurveKind::Line ? 1 : kCurvePoints;
    const double first = curve.FirstParameter();
    const double step = (curve.LastParameter() - first) / pieces;
    for (int i = 0; i <= pieces; ++i) {
        edge.points.push_back(vectorOf(curve.Value(first + i * step)));
    }
    edge.start = edge.points.front();
    edge.end = edge.points.back();
}

/// Whether the surface's own normal points away from its axis.
template <class Elementary> bool isDirect(const Elementary& surface) {
    return surface.Position().Direct();
}

template <class Elementary> void setAxis(const Elementary& surface, bool reversed, Face& face) {
    face.origin = vectorOf(surface.Location());
    face.axis = vectorOf(surface.Position().Direction());
    face.hollow = reversed == isDirect(surface);
}

/// Half-way round the axis, over the angles that the face has.
Edge sectionOf(const BRepAdaptor_Surface& surface) {
    const gp_Torus torus = surface.Torus();
    const double around = (surface.FirstUParameter() + surface.LastUParameter()) / 2;
    const gp_Circ circle =
        ElSLib::TorusUIso(torus.Position(), torus.MajorRadius(), torus.MinorRadius(), around);
    Edge edge;
    setCircle(circle, edge);
    const double first = surface.FirstVParameter();
    const double last = surface.LastVParameter();
    edge.start = vectorOf(ElCLib::Value(first, circle));
    edge.end = vectorOf(ElCLib::Value(last, circle));
    edge.length = (last - first) * edge.radius;
    return edge;
}

void setSurface(const BRepAdaptor_Surface& surface, bool reversed, Face& face) {
    switch (surface.GetType()) {
    case GeomAbs_Plane: {
        const gp_Pln plane = surface.Plane();
        face.kind = SurfaceKind::Plane;
        face.origin = vectorOf(plane.Location());
        const double side = reversed == plane.Direct() ? -1 : 1;
        face.axis = side * vectorOf(plane.Axis().Direction());
        break;
    }
    case GeomAbs_Cylinder:
        face.kind = SurfaceKind::Cylinder;
        setAxis(surface.Cylinder(), reversed, face);
        face.radius = surface.Cylinder().Radius();
        break;
    case GeomAbs_Cone:
        face.kind = SurfaceKind::Cone;
        setAxis(surface.Cone(), reversed, face);
        face.radius = surface.Cone().RefRadius();
        face.halfAngle = surface.Cone().SemiAngle();
        break;
    case GeomAbs_Sphere:
        face.kind = SurfaceKind::Sphere;
        setAxis(surface.Sphere(), reversed, face);
        face.radius = surface.Sphere().Radius();
        break;
    case GeomAbs_Torus:
        face.kind = SurfaceKind::Torus;
        setAxis(surface.Torus(), reversed, face);
        face.radius = surface.Torus().MajorRadius();
        face.minorRadius = surface.Torus().MinorRadius();
        face.section = sectionOf(surface);
        break;
    default:
        break;
    }
}

/// Points across the whole of a face's rectangle of parameters.
void sampleSurface(const TopoDS_Face& shape, const BRepAdaptor_Surface& surface, Face& face) {
    double u0 = 0;
    double u1 = 0;
    double v0 = 0;
    double v1 = 0;
    BRepTools::UVBounds(shape, u0, u1, v0, v1);
    if (!isFinite(u0, u1) || !isFinite(v0, v1)) {
        return;
    }
    for (int i = 0; i < kSurfacePoints; ++i) {
        for (int j = 0; j < kSurfacePoints; ++j) {
            const double u = u0 + (u1 - u0) * i / (kSurfacePoints - 1);
            const double v = v0 + (v1 - v0) * j / (kSurfacePoints - 1);
            face.points.push_back(vectorOf(surface.Value(u, v)));
        }
    }
}

bool isStraightAcross(SurfaceKind kind) {
    return kind == SurfaceKind::Plane || kind == SurfaceKind::Cylinder || kind == SurfaceKind::Cone;
}

} // namespace

Edge edgeRecord(const TopoDS_Edge& shape) {
    Edge edge;
    const BRepAdaptor_Curve curve(shape);
    if (!isFinite(curve.FirstParameter(), curve.LastParameter())) {
        return edge;
    }
    if (curve.GetType() == GeomAbs_Line) {
        edge.kind = CurveKind::Line;
    } else if (curve.GetType() == GeomAbs_Circle) {
        setCircle(curve.Circle(), edge);
    }
    samplePoints(curve, edge);
    edge.length = GCPnts_AbscissaPoint::Length(curve);
    return edge;
}

Face faceRecord(const TopoDS_Face& shape) {
    Face face;
    const BRepAdaptor_Surface surface(shape);
    setSurface(surface, shape.Orientation() == TopAbs_REVERSED, face);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges(i));
        if (BRep_Tool::Degenerated(edge) || BRep_Tool::IsClosed(edge, shape)) {
            continue;
        }
        face.edges.push_back(edgeRecord(edge));
        const std::vector<Vec3>& points = face.edges.back().points;
        face.points.insert(face.points.end(), points.begin(), points.end());
    }
    if (!isStraightAcross(face.kind)) {
        sampleSurface(shape, surface, face);
    }
    return face;
}

Places::Places(const TopoDS_Shape& whole) : whole_(whole) {
    for (TopExp_Explorer solid(whole, TopAbs_SOLID); solid.More(); solid.Next()) {
        add(solid.Current(), /*outsideSolids=*/false);
        ++parts_;
    }
    add(whole, /*outsideSolids=*/true);
}

void Places::add(const TopoDS_Shape& part, bool outsideSolids) {
    const TopAbs_ShapeEnum avoided = outsideSolids ? TopAbs_SOLID : TopAbs_SHAPE;
    for (const TopAbs_ShapeEnum kind : {TopAbs_FACE, TopAbs_EDGE, TopAbs_VERTEX}) {
        for (TopExp_Explorer at(part, kind, avoided); at.More(); at.Next()) {
            first_.try_emplace(at.Current().TShape().get(), Place{at.Current(), parts_});
        }
    }
}

Places::Place Places::placeOf(const TopoDS_Shape& shape) const {
    const auto found = first_.find(shape.TShape().get());
    return found == first_.end() ? Place{shape, 0} : found->second;
}

void Places::addTo(Feature& feature, const TopoDS_Shape& shape, int entity) const {
    if (shape.ShapeType() == TopAbs_VERTEX) {
        const Place place = placeOf(shape);
        feature.points.push_back(vectorOf(BRep_Tool::Pnt(TopoDS::Vertex(place.shape))));
        return;
    }
    if (shape.ShapeType() == TopAbs_EDGE) {
        feature.edges.push_back(edgeRecord(TopoDS::Edge(placeOf(shape).shape)));
        return;
    }
    for (TopExp_Explorer at(shape, TopAbs_FACE); at.More(); at.Next()) {
        const Place place = placeOf(at.Current());
        Face face = faceRecord(TopoDS::Face(place.shape));
        face.entity = entity;
        face.part = place.part;
        feature.faces.push_back(std::move(face));
    }
}

std::vector<Face> Places::planes() const {
    std::vector<Face> planes;
    for (TopExp_Explorer at(whole_, TopAbs_FACE); at.More(); at.Next()) {
        const TopoDS_Face& shape = TopoDS::Face(at.Current());
        if (BRepAdaptor_Surface(shape, Standard_False).GetType() != GeomAbs_Plane) {
            continue;
        }
        const Place place = placeOf(shape);
        if (!place.shape.IsSame(shape)) {
            continue;
        }
        Face face = faceRecord(shape);
        face.part = place.part;
        face.edges.clear();
        planes.push_back(std::move(face));
    }
    return planes;
}

std::vector<Vec3> hullOf(const TopoDS_Shape& shape) {
    // Directions of a cube's faces, edges and corners, and those between them.
    struct Farthest {
        Vec3 direction;
        double reach = -HUGE_VAL;
        Vec3 point{};
    };
    std::vector<Farthest> farthest;
    for (const double x : {-2., -1., 0., 1., 2.}) {
        for (const double y : {-2., -1., 0., 1., 2.}) {
            for (const double z : {-2., -1., 0., 1., 2.}) {
                if (std::max({std::abs(x), std::abs(y), std::abs(z)}) == 2.) {
                    farthest.push_back({unit({x, y, z})});
                }
            }
        }
    }
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    for (int i = 1; i <= faces.Extent(); ++i) {
        for (const Vec3& point : faceRecord(TopoDS::Face(faces(i))).points) {
            for (Farthest& far : farthest) {
                const double reach = dot(point, far.direction);
                if (reach > far.reach) {
                    far.reach = reach;
                    far.point = point;
                }
            }
        }
    }
    std::vector<Vec3> hull;
    for (const Farthest& far : farthest) {
        if (far.reach > -HUGE_VAL) {
            hull.push_back(far.point);
        }
    }
    return hull;
}

} // namespace host::step
