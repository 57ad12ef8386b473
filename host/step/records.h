/// @file
/// What a STEP file says, as plain records: dimensions with their values, and the exact geometry of
/// the faces and edges that they name. Lengths of the geometry are millimetres; values stand in the
/// unit that the file gives them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/geometry/vectors.h"

namespace host::step {

enum class CurveKind : std::uint8_t { Line, Circle, Other };

/// An edge of the part.
struct Edge {
    CurveKind kind = CurveKind::Other;
    Vec3 start{};
    Vec3 end{};
    /// Of a circle, which runs counter-clockwise about its axis from start to end.
    Vec3 centre{};
    Vec3 axis{};
    double radius = 0;
    double length = 0;
    /// Points along it, both ends included: how far it reaches in any direction.
    std::vector<Vec3> points;

    bool closed() const;
};

enum class SurfaceKind : std::uint8_t { Plane, Cylinder, Cone, Sphere, Torus, Other };

/// A face of the part.
struct Face {
    /// Its number in the file.
    int entity = 0;
    SurfaceKind kind = SurfaceKind::Other;
    /// A point of the plane; on the axis otherwise.
    Vec3 origin{};
    /// Out of the material for a plane, along the axis otherwise.
    Vec3 axis{};
    /// Of the cylinder, the sphere and the cone at its origin; the larger one of a torus.
    double radius = 0;
    /// The smaller one of a torus.
    double minorRadius = 0;
    /// Half the angle of a cone, in radians; it widens along its axis where this is positive.
    double halfAngle = 0;
    /// The material lies outside, as around a hole.
    bool hollow = false;
    /// Which part of an assembly it belongs to.
    int part = 0;
    std::vector<Edge> edges;
    /// Of a torus: the smaller circle, half-way round, as far as the face has it.
    Edge section;
    /// On the face, as far as it reaches.
    std::vector<Vec3> points;
};

/// What one side of a dimension names.
struct Feature {
    std::vector<Face> faces;
    std::vector<Edge> edges;
    std::vector<Vec3> points;
    /// What else it names, by kind: a thread's curve set, for one.
    std::vector<std::string> others;

    bool empty() const { return faces.empty() && edges.empty() && points.empty(); }
};

enum class DimensionKind : std::uint8_t { Size, Location, AngularSize, AngularLocation };

/// How the number is to be read besides its tolerance.
enum class Modifier : std::uint8_t { None, Reference, Basic };

struct Dimension {
    int entity = 0;
    DimensionKind kind = DimensionKind::Size;
    /// As the file has it: `diameter`, `linear distance`.
    std::string name;
    std::optional<double> nominal;
    /// Relative to the nominal.
    std::optional<double> upper;
    std::optional<double> lower;
    /// The file gives the two limits and not what they deviate from.
    bool limits = false;
    /// Form, grade: `H7`.
    std::string fit;
    /// `mm`, `in`, `deg`, or the file's own name of a unit.
    std::string unit;
    /// Millimetres, or radians, in one of that unit.
    double unitSize = 1;
    /// Behind the decimal point, where the file says so.
    std::optional<int> decimals;
    Modifier modifier = Modifier::None;
    /// Lines that the file adds to the number: `controlled radius`.
    std::vector<std::string> remarks;
    Feature first;
    /// Of a location, what it is measured to.
    Feature second;
};

/// All of a file that a drawing is made from.
struct Model {
    std::string title;
    /// Of the file's geometry.
    std::string unit;
    std::vector<Dimension> dimensions;
    /// Plane faces, for a depth that names its floor alone.
    std::vector<Face> planes;
    /// Points that reach as far as the part does, in every direction.
    std::vector<Vec3> hull;
    int parts = 0;
    /// Geometric tolerances and datums by kind.
    std::map<std::string, int> tolerances;
    std::map<std::string, int> datums;
};

/// A line of a part's picture, in the model.
struct PictureEdge {
    Edge edge;
    bool hidden = false;
};

/// How a part looks from one side.
struct Picture {
    std::vector<PictureEdge> edges;
    /// Made from the mesh, because the exact lines took too long.
    bool fromMesh = false;
};

/// All of a part, as a viewer shows and measures it.
struct Body {
    /// x, y and z of each vertex.
    std::vector<float> positions;
    /// Three vertices each, counter-clockwise as seen from outside; faces share none.
    std::vector<std::uint32_t> triangles;
    /// How many triangles each face has.
    std::vector<std::uint32_t> faces;
    /// Pieces of the edges that are neither straight nor round, two vertices each.
    std::vector<std::uint32_t> curves;
    /// Lines and arcs, without the seams of round faces.
    std::vector<Edge> edges;
};

/// What is wrong with a file, or with the request: one line.
class StepError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Records as bytes, for a pipe.
std::string packModel(const Model& model);
std::string packPicture(const Picture& picture);
std::string packBody(const Body& body);
/// Throws `StepError` for bytes that are no records. Numbers may be anything.
Model unpackModel(std::string_view bytes);
Picture unpackPicture(std::string_view bytes);
Body unpackBody(std::string_view bytes);

} // namespace host::step
