#include "host/step/read/body.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>

#include "host/step/read/shapes.h"

namespace host::step {
namespace {

/// How far chords may be off their curve, and how far they may turn.
struct Fineness {
    double deviation;
    double turn;
};

/// As a part of the part's size, and in radians.
constexpr Fineness kFine{5e-4, 0.25};
constexpr std::size_t kMostTriangles = 90000;
constexpr int kMostTries = 5;
constexpr double kCoarser = 2.5;

std::uint32_t vertexCount(const Body& body) {
    return static_cast<std::uint32_t>(body.positions.size() / 3);
}

void addVertex(const gp_Pnt& p, Body& body) {
    for (const double x : {p.X(), p.Y(), p.Z()}) {
        body.positions.push_back(static_cast<float>(x));
    }
}

void addFace(const TopoDS_Face& face, Body& body) {
    TopLoc_Location place;
    const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, place);
    if (mesh.IsNull() || mesh->NbTriangles() == 0) {
        return;
    }
    const gp_Trsf& moved = place.Transformation();
    const std::uint32_t first = vertexCount(body);
    for (int i = 1; i <= mesh->NbNodes(); ++i) {
        addVertex(mesh->Node(i).Transformed(moved), body);
    }
    const bool turned = (face.Orientation() == TopAbs_REVERSED) != moved.IsNegative();
    for (int i = 1; i <= mesh->NbTriangles(); ++i) {
        int a = 0;
        int b = 0;
        int c = 0;
        mesh->Triangle(i).Get(a, b, c);
        if (turned) {
            std::swap(b, c);
        }
        for (const int node : {a, b, c}) {
            body.triangles.push_back(first + static_cast<std::uint32_t>(node - 1));
        }
    }
    body.faces.push_back(static_cast<std::uint32_t>(mesh->NbTriangles()));
}

/// A round face runs once around and meets itself there.
bool isSeam(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces) {
    return std::any_of(faces.begin(), faces.end(), [&](const TopoDS_Shape& face) {
        return BRep_Tool::IsClosed(edge, TopoDS::Face(face));
    });
}

/// Of the circle through three points.
Vec3 centreOf(const Vec3& a, const Vec3& b, const Vec3& c) {
    const Vec3 u = b - a;
    const Vec3 v = c - a;
    const Vec3 normal = cross(u, v);
    const Vec3 towards = dot(v, v) * cross(normal, u) + dot(u, u) * cross(v, normal);
    return a + 0.5 / dot(normal, normal) * towards;
}

/// The line or the arc that was meant by a curve which runs along it: some programs write every
/// curve as a spline.
std::optional<Edge> recognised(const BRepAdaptor_Curve& curve) {
    constexpr int kPlaces = 16;
    /// As a part of the curve's size.
    constexpr double kPrecision = 1e-7;
    std::vector<Vec3> at;
    double reach = 0;
    for (int i = 0; i <= kPlaces; ++i) {
        const double first = curve.FirstParameter();
        const gp_Pnt p = curve.Value(first + i * (curve.LastParameter() - first) / kPlaces);
        at.push_back({p.X(), p.Y(), p.Z()});
        reach = std::max(reach, length(at.back() - at.front()));
    }
    const double near = kPrecision * reach;
    Edge edge;
    edge.start = at.front();
    edge.end = at.back();
    // A third of the way is never opposite to the start, nor back at it.
    const Vec3& second = at[kPlaces / 3];
    const Vec3& third = at[2 * kPlaces / 3];
    const Vec3 across = cross(second - edge.start, third - edge.start);
    if (length(across) <= kPrecision * reach * reach) {
        const Vec3 direction = unit(edge.end - edge.start);
        edge.kind = CurveKind::Line;
        const bool straight = std::all_of(at.begin(), at.end(), [&](const Vec3& p) {
            return length(cross(p - edge.start, direction)) <= near;
        });
        return straight && edge.start != edge.end ? std::optional(edge) : std::nullopt;
    }
    edge.kind = CurveKind::Circle;
    edge.axis = unit(across);
    edge.centre = centreOf(edge.start, second, third);
    edge.radius = length(edge.start - edge.centre);
    const bool round = std::all_of(at.begin(), at.end(), [&](const Vec3& p) {
        return std::abs(length(p - edge.centre) - edge.radius) <= near &&
               std::abs(dot(p - edge.start, edge.axis)) <= near;
    });
    return round ? std::optional(edge) : std::nullopt;
}

void addCurve(const BRepAdaptor_Curve& curve, const Fineness& fineness, Body& body) {
    GCPnts_TangentialDeflection points(curve, fineness.turn, fineness.deviation);
    for (int i = 1; i <= points.NbPoints(); ++i) {
        if (i > 1) {
            body.curves.push_back(vertexCount(body) - 1);
            body.curves.push_back(vertexCount(body));
        }
        addVertex(points.Value(i), body);
    }
}

void addEdges(const TopoDS_Shape& shape, const Fineness& fineness, Body& body) {
    TopTools_IndexedDataMapOfShapeListOfShape facesOf;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, facesOf);
    for (int i = 1; i <= facesOf.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(facesOf.FindKey(i));
        if (BRep_Tool::Degenerated(edge) || isSeam(edge, facesOf(i))) {
            continue;
        }
        Edge record = edgeRecord(edge);
        if (record.kind != CurveKind::Other) {
            record.points.clear();
            body.edges.push_back(std::move(record));
        } else if (!record.points.empty()) {
            const BRepAdaptor_Curve curve(edge);
            if (auto meant = recognised(curve)) {
                body.edges.push_back(std::move(*meant));
            } else {
                addCurve(curve, fineness, body);
            }
        }
    }
}

bool isFinite(const std::vector<float>& numbers) {
    constexpr float kFarthest = 1e8F;
    return std::all_of(numbers.begin(), numbers.end(),
                       [](float x) { return std::abs(x) <= kFarthest; });
}

} // namespace

Body bodyOf(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::Add(shape, box, Standard_False);
    if (box.IsVoid()) {
        return {};
    }
    Fineness fineness{kFine.deviation * std::sqrt(box.SquareExtent()), kFine.turn};
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    Body body;
    for (int attempt = 1; attempt <= kMostTries; ++attempt) {
        body = {};
        BRepTools::Clean(shape);
        const BRepMesh_IncrementalMesh meshing(shape, fineness.deviation, Standard_False,
                                               fineness.turn);
        for (int i = 1; i <= faces.Extent(); ++i) {
            addFace(TopoDS::Face(faces(i)), body);
        }
        if (body.triangles.size() / 3 <= kMostTriangles) {
            break;
        }
        fineness = {fineness.deviation * kCoarser, std::min(fineness.turn * kCoarser, 1.0)};
    }
    addEdges(shape, fineness, body);
    if (!isFinite(body.positions)) {
        throw StepError("its faces cannot be shown");
    }
    return body;
}

} // namespace host::step
