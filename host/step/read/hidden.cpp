#include "host/step/read/hidden.h"

#include <cmath>
#include <set>
#include <tuple>

#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <HLRBRep_PolyAlgo.hxx>
#include <HLRBRep_PolyHLRToShape.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Ax2.hxx>
#include <gp_Circ.hxx>

namespace host::step {
namespace {

/// How far lines may be off, as a part of the part's size.
constexpr double kDeviation = 2e-4;
constexpr int kDeepestSplit = 6;

gp_Dir direction(const Vec3& v) { return {v[0], v[1], v[2]}; }

HLRAlgo_Projector projectorOf(const Vec3& right, const Vec3& up) {
    return {gp_Ax2(gp_Pnt(0, 0, 0), direction(cross(right, up)), direction(right))};
}

double sizeOf(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::Add(shape, box);
    return box.IsVoid() ? 1 : std::sqrt(box.SquareExtent());
}

/// Turns lines on paper, in OCCT's plane of projection, into edges of the model.
class Tracer {
public:
    Tracer(const Vec3& right, const Vec3& up, double size)
        : right_(right), up_(up), tolerance_(kDeviation * size) {}

    void add(const TopoDS_Shape& lines, bool hidden) {
        if (lines.IsNull()) {
            return;
        }
        BRepLib::BuildCurves3d(lines);
        TopTools_IndexedMapOfShape edges;
        TopExp::MapShapes(lines, TopAbs_EDGE, edges);
        for (int i = 1; i <= edges.Extent(); ++i) {
            trace(BRepAdaptor_Curve(TopoDS::Edge(edges(i))), hidden);
        }
    }
    Picture take() { return std::move(picture_); }

private:
    Vec3 inModel(const gp_Pnt& p) const { return p.X() * right_ + p.Y() * up_; }

    void trace(const BRepAdaptor_Curve& curve, bool hidden) {
        const double first = curve.FirstParameter();
        const double last = curve.LastParameter();
        if (curve.GetType() == GeomAbs_Line) {
            addLine(curve.Value(first), curve.Value(last), hidden);
        } else if (curve.GetType() == GeomAbs_Circle) {
            addCircle(curve, hidden);
        } else {
            addPieces(curve, first, last, 0, hidden);
        }
    }

    /// Whether the edge is a new one: some are found once for each of their faces.
    bool isNew(const Edge& edge, bool hidden) {
        const auto rounded = [this](double value) { return std::llround(value / tolerance_); };
        const auto key = [&](const Vec3& p) {
            return std::tuple{rounded(p[0]), rounded(p[1]), rounded(p[2])};
        };
        const auto a = key(edge.start);
        const auto b = key(edge.end);
        const auto m = key(edge.kind == CurveKind::Circle ? edge.points.front() : edge.start);
        return seen_.insert({hidden, std::min(a, b), std::max(a, b), m}).second;
    }

    void add(Edge edge, bool hidden) {
        if (!isNew(edge, hidden)) {
            return;
        }
        edge.points.clear();
        picture_.edges.push_back({std::move(edge), hidden});
    }

    void addLine(const gp_Pnt& start, const gp_Pnt& end, bool hidden) {
        if (start.Distance(end) < 1e-2 * tolerance_) {
            return;
        }
        Edge edge;
        edge.kind = CurveKind::Line;
        edge.start = inModel(start);
        edge.end = inModel(end);
        if (std::tie(edge.end) < std::tie(edge.start)) {
            std::swap(edge.start, edge.end);
        }
        add(std::move(edge), hidden);
    }

    void addCircle(const BRepAdaptor_Curve& curve, bool hidden) {
        const gp_Circ circle = curve.Circle();
        const double first = curve.FirstParameter();
        const double last = curve.LastParameter();
        addArc(circle.Location(), circle.Radius(), circle.Axis().Direction().Z() > 0,
               curve.Value(first), curve.Value((first + last) / 2), curve.Value(last), hidden);
    }

    void addArc(const gp_Pnt& centre, double radius, bool counterClockwise, const gp_Pnt& start,
                const gp_Pnt& middle, const gp_Pnt& end, bool hidden) {
        Edge edge;
        edge.kind = CurveKind::Circle;
        edge.centre = inModel(centre);
        edge.radius = radius;
        edge.axis = cross(right_, up_);
        edge.start = inModel(counterClockwise ? start : end);
        edge.end = inModel(counterClockwise ? end : start);
        edge.points = {inModel(middle)};
        add(std::move(edge), hidden);
    }

    /// A free curve as arcs and lines.
    void addPieces(const BRepAdaptor_Curve& curve, double first, double last, int depth,
                   bool hidden) {
        const double middle = (first + last) / 2;
        const gp_Pnt a = curve.Value(first);
        const gp_Pnt m = curve.Value(middle);
        const gp_Pnt b = curve.Value(last);
        const gp_Pnt quarters[] = {curve.Value((first + middle) / 2),
                                   curve.Value((middle + last) / 2)};
        const double twiceArea =
            (m.X() - a.X()) * (b.Y() - a.Y()) - (m.Y() - a.Y()) * (b.X() - a.X());
        const double chord = a.Distance(b);
        const bool deepest = depth >= kDeepestSplit;
        if (chord > 0 && std::abs(twiceArea) / chord < tolerance_ / 4 &&
            (deepest || (isNear(quarters[0], a, b) && isNear(quarters[1], a, b)))) {
            addLine(a, b, hidden);
            return;
        }
        const double side = a.Distance(m) * m.Distance(b) * chord;
        if (twiceArea != 0 && (deepest || depth > 0)) {
            const double radius = side / (2 * std::abs(twiceArea));
            const gp_Pnt centre = centreOf(a, m, b, twiceArea);
            const auto fits = [&](const gp_Pnt& p) {
                return std::abs(p.Distance(centre) - radius) < tolerance_;
            };
            if (deepest || (fits(quarters[0]) && fits(quarters[1]))) {
                addArc(centre, radius, twiceArea > 0, a, m, b, hidden);
                return;
            }
        }
        if (deepest) {
            addLine(a, b, hidden);
            return;
        }
        addPieces(curve, first, middle, depth + 1, hidden);
        addPieces(curve, middle, last, depth + 1, hidden);
    }

    bool isNear(const gp_Pnt& p, const gp_Pnt& a, const gp_Pnt& b) const {
        const double twiceArea =
            (p.X() - a.X()) * (b.Y() - a.Y()) - (p.Y() - a.Y()) * (b.X() - a.X());
        return std::abs(twiceArea) < tolerance_ * a.Distance(b);
    }

    /// Of the circle through three points.
    static gp_Pnt centreOf(const gp_Pnt& a, const gp_Pnt& m, const gp_Pnt& b, double twiceArea) {
        const double mx = m.X() - a.X();
        const double my = m.Y() - a.Y();
        const double bx = b.X() - a.X();
        const double by = b.Y() - a.Y();
        const double m2 = mx * mx + my * my;
        const double b2 = bx * bx + by * by;
        return {a.X() + (by * m2 - my * b2) / (2 * twiceArea),
                a.Y() + (mx * b2 - bx * m2) / (2 * twiceArea), 0};
    }

    using Key = std::tuple<long long, long long, long long>;
    Vec3 right_;
    Vec3 up_;
    double tolerance_;
    Picture picture_;
    std::set<std::tuple<bool, Key, Key, Key>> seen_;
};

/// Sharp edges and outlines; where one face runs into the next smoothly there is no line.
template <class Result> Picture traced(Result& lines, Tracer& tracer) {
    tracer.add(lines.HCompound(), /*hidden=*/true);
    tracer.add(lines.OutLineHCompound(), /*hidden=*/true);
    tracer.add(lines.VCompound(), /*hidden=*/false);
    tracer.add(lines.OutLineVCompound(), /*hidden=*/false);
    return tracer.take();
}

} // namespace

Picture exactPicture(const TopoDS_Shape& shape, const Vec3& right, const Vec3& up) {
    const Handle(HLRBRep_Algo) algorithm = new HLRBRep_Algo;
    algorithm->Add(shape);
    algorithm->Projector(projectorOf(right, up));
    algorithm->Update();
    algorithm->Hide();
    HLRBRep_HLRToShape lines(algorithm);
    Tracer tracer(right, up, sizeOf(shape));
    return traced(lines, tracer);
}

Picture meshPicture(const TopoDS_Shape& shape, const Vec3& right, const Vec3& up) {
    constexpr double kAngularDeviation = 0.35;
    const double size = sizeOf(shape);
    // Its constructor makes the mesh, which stays with the shape.
    const BRepMesh_IncrementalMesh meshing(shape, 5 * kDeviation * size, Standard_False,
                                           kAngularDeviation);
    const Handle(HLRBRep_PolyAlgo) algorithm = new HLRBRep_PolyAlgo;
    algorithm->Load(shape);
    algorithm->Projector(projectorOf(right, up));
    algorithm->Update();
    HLRBRep_PolyHLRToShape lines;
    lines.Update(algorithm);
    Tracer tracer(right, up, size);
    Picture picture = traced(lines, tracer);
    picture.fromMesh = true;
    return picture;
}

} // namespace host::step
