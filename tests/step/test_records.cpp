// Records of dimensions, without a STEP file: what is derived of them does not hang on where the
// part stands, and bytes that are no records are refused.
#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

#include "host/step/derive/derive.h"
#include "host/step/records.h"
#include "host/step/text.h"
#include "host/step/write/report.h"

namespace host::step {
namespace {

Face planeFace(const Vec3& normal, const Vec3& corner, const Vec3& a, const Vec3& b) {
    Face face;
    face.kind = SurfaceKind::Plane;
    face.axis = normal;
    face.origin = corner;
    face.points = {corner, corner + a, corner + b, corner + a + b};
    return face;
}

Face boreFace(const Vec3& centre, double radius, double depth) {
    Face face;
    face.kind = SurfaceKind::Cylinder;
    face.hollow = true;
    face.axis = {0, 0, 1};
    face.origin = centre;
    face.radius = radius;
    for (const double z : {0.0, depth}) {
        Edge rim;
        rim.kind = CurveKind::Circle;
        rim.axis = {0, 0, 1};
        rim.centre = centre + Vec3{0, 0, z};
        rim.radius = radius;
        rim.start = rim.end = rim.centre + Vec3{radius, 0, 0};
        for (int i = 0; i <= 8; ++i) {
            rim.points.push_back(rim.centre + radius * Vec3{std::cos(i * 0.7853981633974483),
                                                            std::sin(i * 0.7853981633974483), 0});
        }
        face.points.insert(face.points.end(), rim.points.begin(), rim.points.end());
        face.edges.push_back(rim);
    }
    return face;
}

Dimension dimensionOf(DimensionKind kind, const std::string& name, double nominal, Feature first,
                      Feature second = {}) {
    Dimension dimension;
    dimension.kind = kind;
    dimension.name = name;
    dimension.nominal = nominal;
    dimension.unit = kind == DimensionKind::Size || kind == DimensionKind::Location ? "mm" : "deg";
    dimension.first = std::move(first);
    dimension.second = std::move(second);
    return dimension;
}

Feature ofFace(Face face) {
    Feature feature;
    feature.faces.push_back(std::move(face));
    return feature;
}

/// A block of 100 x 60 x 20 with a stepped top, a bore and a sloped side, and what is measured on
/// it. Between them they use every rule for planes, axes and points.
Model block() {
    const Face left = planeFace({-1, 0, 0}, {0, 0, 0}, {0, 60, 0}, {0, 0, 20});
    const Face right = planeFace({1, 0, 0}, {100, 0, 0}, {0, 60, 0}, {0, 0, 20});
    const Face top = planeFace({0, 0, 1}, {0, 0, 20}, {60, 0, 0}, {0, 60, 0});
    const Face step = planeFace({0, 0, 1}, {60, 0, 14}, {40, 0, 0}, {0, 60, 0});
    const double half = std::sqrt(0.5);
    const Face slope = planeFace({half, half, 0}, {100, 40, 0}, {-20, 20, 0}, {0, 0, 14});
    Feature bore = ofFace(boreFace({30, 25, 0}, 4, 20));
    Feature corner;
    corner.points = {{100, 0, 14}};
    Model model;
    model.planes = {left, right, top, step, slope};
    for (const double x : {0., 100.}) {
        for (const double y : {0., 60.}) {
            for (const double z : {0., 20.}) {
                model.hull.push_back({x, y, z});
            }
        }
    }
    const auto size = DimensionKind::Size;
    const auto location = DimensionKind::Location;
    model.dimensions = {
        dimensionOf(location, "linear distance", 100, ofFace(left), ofFace(right)),
        dimensionOf(location, "linear distance", 30, ofFace(left), bore),
        dimensionOf(location, "linear distance inner", 26, ofFace(left), bore),
        dimensionOf(location, "linear distance", 6, ofFace(top), corner),
        // From the floor of the step up to the top, which is not named.
        dimensionOf(size, "depth", 6, ofFace(step)),
        // An oblique plane counts as far as it reaches.
        dimensionOf(location, "linear distance", 80, ofFace(left), ofFace(slope)),
        dimensionOf(DimensionKind::AngularLocation, "angle", 45, ofFace(right), ofFace(slope)),
        dimensionOf(size, "diameter", 8, bore),
        dimensionOf(size, "radius", 5, bore),
    };
    return model;
}

const Fate kFates[] = {Fate::Drawn, Fate::Drawn, Fate::Drawn, Fate::Drawn, Fate::Drawn,
                       Fate::Drawn, Fate::Drawn, Fate::Drawn, Fate::Noted};

/// A rotation about an oblique axis, and a move.
struct Motion {
    double angle = 0;
    Vec3 axis{0, 0, 1};
    Vec3 by{};

    Vec3 direction(const Vec3& v) const {
        return std::cos(angle) * v + std::sin(angle) * cross(axis, v) +
               (1 - std::cos(angle)) * dot(axis, v) * axis;
    }
    Vec3 point(const Vec3& p) const { return direction(p) + by; }
};

void move(std::vector<Vec3>& points, const Motion& motion) {
    for (Vec3& point : points) {
        point = motion.point(point);
    }
}

void move(Face& face, const Motion& motion) {
    face.origin = motion.point(face.origin);
    face.axis = motion.direction(face.axis);
    move(face.points, motion);
    for (Edge& edge : face.edges) {
        for (Vec3* point : {&edge.start, &edge.end, &edge.centre}) {
            *point = motion.point(*point);
        }
        edge.axis = motion.direction(edge.axis);
        move(edge.points, motion);
    }
}

Model moved(Model model, const Motion& motion) {
    for (Dimension& dimension : model.dimensions) {
        for (Feature* feature : {&dimension.first, &dimension.second}) {
            for (Face& face : feature->faces) {
                move(face, motion);
            }
            move(feature->points, motion);
        }
    }
    for (Face& plane : model.planes) {
        move(plane, motion);
    }
    move(model.hull, motion);
    return model;
}

TEST(StepDerive, DoesNotHangOnWhereThePartStands) {
    const Motion motions[] = {
        {},
        {0, {0, 0, 1}, {1000, -500, 30}},
        {1.5707963267948966, {1, 0, 0}, {0, 0, 0}},
        {0.7, host::unit({1, 2, 3}), {12, 5, -80}},
    };
    for (const Motion& motion : motions) {
        const Drawing drawing = makeDrawing("block", moved(block(), motion));
        for (std::size_t i = 0; i < drawing.outcomes.size(); ++i) {
            EXPECT_EQ(drawing.outcomes[i].fate, kFates[i])
                << i << ' ' << motion.angle << ' ' << drawing.outcomes[i].reason;
            EXPECT_EQ(viewsOf(drawing, i).size(), 1) << i;
        }
    }
}

TEST(StepDerive, SaysBothNumbersWhereThePartContradicts) {
    const Drawing drawing = makeDrawing("block", block());
    EXPECT_EQ(drawing.outcomes[8].reason, "the part measures 4.00 mm where the file says 5.00 mm");
}

TEST(StepDerive, DrawsATextWithBraces) {
    Model model = block();
    model.dimensions[0].fit = "{7";
    const Drawing drawing = makeDrawing("block", model);
    EXPECT_EQ(drawing.outcomes[0].fate, Fate::Drawn) << drawing.outcomes[0].reason;
    EXPECT_NE(oneLine(drawing.outcomes[0].text).find("{7"), std::string::npos);
}

TEST(StepDerive, AllowsHalfOfTheLastDecimal) {
    Model model = block();
    Dimension& length = model.dimensions[0];
    for (const auto& [nominal, decimals, fate] : {std::tuple{100.05, 1, Fate::Drawn},
                                                  {100.051, 1, Fate::Noted},
                                                  {100.4, 0, Fate::Drawn},
                                                  {100.6, 0, Fate::Noted}}) {
        length.nominal = nominal;
        length.decimals = decimals;
        EXPECT_EQ(derive(length, model).fate, fate) << nominal;
    }
}

TEST(StepText, KeepsTheDecimalsAndMarksOfTheFile) {
    Dimension dimension = dimensionOf(DimensionKind::Location, "linear distance", 2.5, {});
    EXPECT_EQ(oneLine(valueText(dimension, 1)), "2.5");
    dimension.decimals = 3;
    dimension.upper = 0.1;
    dimension.lower = -0.1;
    EXPECT_EQ(oneLine(valueText(dimension, 2)), "2X 2.500 ±0.100");
    dimension.modifier = Modifier::Reference;
    dimension.lower = 0;
    EXPECT_EQ(oneLine(valueText(dimension, 1)), "(2.500 +0.100/-0)");
    dimension.remarks = {"maximum"};
    dimension.upper.reset();
    dimension.lower.reset();
    EXPECT_EQ(oneLine(valueText(dimension, 1)), "(2.500 MAX)");
}

TEST(StepRecords, ComeThroughThePipeWhole) {
    const std::string bytes = packModel(block());
    EXPECT_EQ(packModel(unpackModel(bytes)), bytes);
    for (std::size_t size = 0; size < bytes.size(); size += 97) {
        EXPECT_THROW(unpackModel(std::string_view(bytes).substr(0, size)), StepError) << size;
    }
    EXPECT_THROW(unpackModel(bytes + "x"), StepError);
}

} // namespace
} // namespace host::step
