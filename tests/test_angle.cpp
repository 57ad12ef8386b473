// The angle of two edges, by the side of its text and by picks.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;

/// Two edges on rays from a frame's origin: the first along its X axis.
struct Corner {
    Rigid frame;
    std::array<Vec, 2> rays;
    std::array<double, 2> gap{};
    std::array<double, 2> reach{};
    std::array<bool, 2> inwards{};

    explicit Corner(Random& random) : frame(Rigid::random(random)) {
        const double angle = random.number(0.15, 0.9 * kHalfTurn);
        rays = {Vec{1, 0, 0}, Vec{std::cos(angle), std::sin(angle), 0}};
        for (std::size_t i = 0; i < 2; ++i) {
            gap[i] = random.number(0, 1) < 0.5 ? 0.0 : random.number(2.0, 20.0);
            reach[i] = gap[i] + random.number(10.0, 40.0);
            inwards[i] = random.number(0, 1) < 0.5;
        }
    }

    /// An edge of the model, lifted off the plane.
    std::unique_ptr<Ank_Line> edge(std::size_t i, double lift = 0.0) const {
        const Vec nearEnd = frame.point(rays[i] * gap[i] + Vec{0, 0, lift});
        const Vec farEnd = frame.point(rays[i] * reach[i] + Vec{0, 0, lift});
        return inwards[i] ? line(farEnd, nearEnd) : line(nearEnd, farEnd);
    }
};

double degrees(double radians) { return radians * 180.0 / kHalfTurn; }

/// Two arrows on an arc about the frame's origin from both sides to the text, and the angle they
/// sweep as the text: about the plane's normal in general, the small one in mode 1.
void ExpectArcOfAngle(const Drawing& drawing, const Rigid& frame, const Vec& side1,
                      const Vec& side2, const Vec& placed, int mode) {
    ASSERT_EQ(drawing.leaders.size(), 2U);
    const double radius = length(placed);
    ExpectStroke(drawing.leaders[0], side1 * radius, placed, kNear);
    ExpectStroke(drawing.leaders[1], side2 * radius, placed, kNear);
    for (const DrawnLeader& leader : drawing.leaders) {
        ExpectVec3Near(leader.centre, {}, kNear);
        ExpectArrow(leader, kNear);
    }
    const Vec normal = frame.directionBack(drawing.plane.axes[2]);
    const double turn = degrees(turnAbout(normal, side1, side2));
    const double small = std::min(turn, 360.0 - turn);
    EXPECT_NEAR(degrees(drawing.leaders[0].sweep() + drawing.leaders[1].sweep()), small, 0.1);
    EXPECT_NEAR(drawing.text.number(), mode == 1 ? small : turn, 0.0055);
    EXPECT_EQ(drawing.text.line.back(), L'\u00B0');
    ExpectVec3Near(drawing.text.at, placed, kNear);
}

/// Edge, extension and special lines of one side meet end to end from the edge to the arc's end:
/// without a gap, and nothing twice. An edge that touches the vertex may have a special line of no
/// length to speak of.
void ExpectJoined(const Drawing& drawing, const Corner& corner, std::size_t i, double arcEnd) {
    const Vec ray = corner.rays[i];
    std::vector<std::array<double, 2>> pieces{{corner.gap[i], corner.reach[i]}};
    std::vector<Stroke> strokes = drawing.extensions;
    strokes.insert(strokes.end(), drawing.specials.begin(), drawing.specials.end());
    for (const Stroke& stroke : strokes) {
        if (length(cross(ray, stroke.from)) + length(cross(ray, stroke.to)) < kNear &&
            length(stroke.to - stroke.from) > 1e-4) {
            const auto [low, high] = std::minmax({dot(ray, stroke.from), dot(ray, stroke.to)});
            pieces.push_back({low, high});
        }
    }
    std::ranges::sort(pieces);
    for (std::size_t k = 1; k < pieces.size(); ++k) {
        EXPECT_NEAR(pieces[k][0], pieces[k - 1][1], kNear) << "side " << i;
    }
    EXPECT_GE(arcEnd, pieces.front()[0] - 0.011) << "side " << i;
    EXPECT_LE(arcEnd, pieces.back()[1] + 0.011) << "side " << i;
}

TEST(AngleTest, LiesOnTheSideOfItsText) {
    Random random(5);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Corner corner(random);
        const auto edge1 = corner.edge(0);
        const auto edge2 = corner.edge(1);
        // In any of the four sectors.
        const std::array<Vec, 2> sides{corner.rays[0] * (i % 2 == 0 ? 1.0 : -1.0),
                                       corner.rays[1] * (i % 4 < 2 ? 1.0 : -1.0)};
        const double part = random.number(0.1, 0.9);
        const Vec placed =
            unit(sides[0] * part + sides[1] * (1.0 - part)) * random.number(2.0, 70.0);
        const Rigid viewer = randomViewer(random, corner.frame.axes[2]);
        _ank_locate place = placedAt(random, corner.frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        int mode = i % 3;
        int status = 7;
        int count = 7;
        double specials[4][3];
        Ank_PMI pmi;
        PMICreateAngleDim(&mode, edge1.get(), edge2.get(), &place, 3.5, &pmi, &status, count,
                          specials, i % 5 == 0 ? nullptr : view.data());
        const Drawing drawing(pmi, corner.frame);

        ExpectLocated(place, drawing, corner.frame.point(placed), viewer);
        ExpectArcOfAngle(drawing, corner.frame, sides[0], sides[1], placed, mode);
        ExpectFlags(pmi, ANK_PMI_ANGLE, true);
        EXPECT_EQ(status, 0);
        ExpectVec3Near(drawing.text.x, {}, 0.0);
        // An extension line runs from the edge's near end to an arc end off the edge.
        std::size_t extension = 0;
        int special = 0;
        for (std::size_t k = 0; k < 2; ++k) {
            const double arcEnd = length(placed) * dot(sides[k], corner.rays[k]);
            if (arcEnd < corner.gap[k] - 0.01 || arcEnd > corner.reach[k] + 0.01) {
                ASSERT_LT(extension, drawing.extensions.size());
                const double from = arcEnd > corner.reach[k] ? corner.reach[k] : corner.gap[k];
                ExpectStroke(drawing.extensions[extension], corner.rays[k] * from,
                             corner.rays[k] * arcEnd, kNear);
                ++extension;
            }
            if (corner.gap[k] > 0.0) {
                const auto inFrame = [&](const double* p) {
                    return corner.frame.pointBack(Vec(p));
                };
                ExpectVec3Near(inFrame(specials[2 * special]), {}, kNear);
                ExpectVec3Near(inFrame(specials[2 * special + 1]), corner.rays[k] * corner.gap[k],
                               kNear);
                ++special;
            }
        }
        EXPECT_EQ(drawing.extensions.size(), extension);
        EXPECT_EQ(count, special);
        EXPECT_TRUE(drawing.specials.empty());
    }
}

/// Picked edges, built in a frame.
struct PickedAngle {
    std::unique_ptr<Ank_Line> edge1;
    std::unique_ptr<Ank_Line> edge2;
    _ank_element element1{};
    _ank_element element2{};
    Ank_PMI pmi;
    int flag1 = 7;
    int flag2 = 7;
    int status = 7;

    PickedAngle(std::unique_ptr<Ank_Line> line1, const Vec& pick1, std::unique_ptr<Ank_Line> line2,
                const Vec& pick2)
        : edge1(std::move(line1)),
          edge2(std::move(line2)), element1{edge1.get(), {pick1.x, pick1.y, pick1.z}},
          element2{edge2.get(), {pick2.x, pick2.y, pick2.z}} {}

    void create(int mode, _ank_locate& place, double* view) {
        PMICreateAngleDim3D(&mode, &flag1, &flag2, &element1, &element2, &place, nullptr, nullptr,
                            3.5, &pmi, &status, view);
    }
};

TEST(PickedAngleTest, LiesBetweenThePicksOrOppositeToThem) {
    Random random(6);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Corner corner(random);
        // Each edge may be picked on the other ray of its line, and edge 2 lies above edge 1.
        const std::array<Vec, 2> picked{corner.rays[0] * (i % 3 == 0 ? -1.0 : 1.0),
                                        corner.rays[1] * (i % 5 == 0 ? -1.0 : 1.0)};
        const double opposite = i % 4 == 0 ? -1.0 : 1.0;
        const double lift = i % 2 == 0 ? 0.0 : random.number(-9.0, 9.0);
        const double part = random.number(0.1, 0.9);
        const Vec placed = unit(picked[0] * part + picked[1] * (1.0 - part)) *
                           (opposite * random.number(2.0, 70.0));
        const Vec pick1 = corner.frame.point(picked[0] * random.number(1.0, 50.0));
        const Vec pick2 =
            corner.frame.point(picked[1] * random.number(1.0, 50.0) + Vec{0, 0, lift});
        const Rigid viewer = randomViewer(random, corner.frame.axes[2]);
        _ank_locate place = placedAt(random, corner.frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        const bool seen = i % 7 != 0;
        const int mode = i % 2;
        PickedAngle angle(corner.edge(0), pick1, corner.edge(1, lift), pick2);
        angle.create(mode, place, seen ? view.data() : nullptr);
        const Drawing drawing(angle.pmi, corner.frame);

        ExpectLocated(place, drawing, corner.frame.point(placed), viewer);
        ExpectArcOfAngle(drawing, corner.frame, picked[0] * opposite, picked[1] * opposite, placed,
                         mode);
        for (std::size_t k = 0; k < 2; ++k) {
            ExpectJoined(drawing, corner, k,
                         length(placed) * opposite * dot(picked[k], corner.rays[k]));
        }
        ExpectFlags(angle.pmi, ANK_PMI_ANGLE, true);
        EXPECT_NEAR(dot(drawing.text.x, placed), 0.0, kNear * length(placed));
        EXPECT_GE(seen ? dot(corner.frame.direction(drawing.text.x), viewer.axes[0]) : 0.0, -1e-5);

        // Edge 2 came down into the plane; the other arguments are as they were.
        ExpectAnnotationNear(read(*angle.edge2), read(*corner.edge(1)), 1e-4);
        EXPECT_EQ(read(*angle.edge1), read(*corner.edge(0)));
        EXPECT_EQ(Vec(angle.element1.pickPoint), pick1);
        EXPECT_EQ(Vec(angle.element2.pickPoint), pick2);
        EXPECT_EQ(angle.status, 0);
        EXPECT_EQ(angle.flag1, 1);
        EXPECT_EQ(angle.flag2, 1);
    }
}

TEST(PickedAngleTest, ZeroAngleLeavesThePlaneAlone) {
    PickedAngle angle(line({1, 1, 0}, {2, 2, 0}), {1.5, 1.5, 0}, line({4, 4, 0}, {9, 9, 0}),
                      {5, 5, 3});
    _ank_locate place = locate({7, 8, 9});
    angle.create(0, place, nullptr);
    EXPECT_EQ(angle.status, 3);
    EXPECT_EQ(angle.flag1, 1);
    EXPECT_EQ(angle.flag2, 1);
    ExpectVec3Near(Vec(place.point), {7, 8, 9}, 0.0);
    const Drawing drawing(angle.pmi, {});
    EXPECT_NEAR(dot(drawing.plane.axes[2], {1, 1, 0}), 0.0, 1e-6);
    Ank_PMI withPlane;
    withPlane.SetDefPlane(angle.pmi.GetDefPlane());
    EXPECT_EQ(read(angle.pmi), read(withPlane));
}

struct ShownAngle {
    const char* name;
    double degrees;
    int mode;
    bool clockwise;
    std::wstring text;
};

class AngleTextTest : public testing::TestWithParam<ShownAngle> {};

TEST_P(AngleTextTest, ShowsDegrees) {
    const double radians = GetParam().degrees / 180.0 * kHalfTurn;
    auto along = line({0, 0, 0}, {20, 0, 0});
    auto away = line({0, 0, 0}, {20 * std::cos(radians), 20 * std::sin(radians), 0});
    if (GetParam().clockwise) {
        std::swap(along, away);
    }
    ViewMatrix view = Rigid{}.view();
    const _ank_locate place = locate({10 * std::cos(radians / 2), 10 * std::sin(radians / 2), 0});
    int mode = GetParam().mode;
    int status = 7;
    int count = 0;
    double specials[4][3];
    _ank_locate place1 = place;
    Ank_PMI pmi;
    PMICreateAngleDim(&mode, along.get(), away.get(), &place1, 3.5, &pmi, &status, count, specials,
                      view.data());
    EXPECT_EQ(valueText(pmi), GetParam().text);

    const Vec pick1 = along->GetEndPoint();
    const Vec pick2 = away->GetEndPoint();
    PickedAngle picked(std::move(along), pick1, std::move(away), pick2);
    _ank_locate place2 = place;
    picked.create(mode, place2, view.data());
    EXPECT_EQ(valueText(picked.pmi), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, AngleTextTest,
    testing::Values(ShownAngle{"Right", 90.0, 0, false, L"90\u00B0"},
                    ShownAngle{"TwoDecimals", 45.256, 0, false, L"45.26\u00B0"},
                    ShownAngle{"OneDecimal", 12.5, 1, false, L"12.5\u00B0"},
                    ShownAngle{"Reflex", 90.0, 0, true, L"270\u00B0"},
                    ShownAngle{"ReflexUnderAnotherMode", 90.0, 2, true, L"270\u00B0"},
                    ShownAngle{"Folded", 90.0, 1, true, L"90\u00B0"}),
    [](const auto& shown) { return shown.param.name; });

TEST(AngleTest, OfParallelEdgesIsZero) {
    const auto edge1 = line({0, 0, 0}, {20, 0, 0});
    const auto edge2 = line({0, 10, 0}, {20, 10, 0});
    _ank_locate place = locate({5, 4, 0});
    int mode = 0;
    int status = 7;
    int count = 7;
    double specials[4][3];
    Ank_PMI pmi;
    PMICreateAngleDim(&mode, edge1.get(), edge2.get(), &place, 3.5, &pmi, &status, count, specials,
                      nullptr);
    const Drawing drawing(pmi, {});
    EXPECT_EQ(drawing.text.line, L"0\u00B0");
    ASSERT_EQ(drawing.leaders.size(), 2U);
    ExpectStroke(drawing.leaders[1], {5, 4, 0}, {5, 4, 0}, 1e-6);
    EXPECT_TRUE(drawing.extensions.empty());
    EXPECT_EQ(count, 0);
    ExpectVec3Near(Vec(specials[3]), {}, 0.0);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace dorvale::test
