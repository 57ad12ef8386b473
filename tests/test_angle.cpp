// The angle of two edges, by the side of its text and by picks.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;

double degrees(double radians) { return radians * 180.0 / kHalfTurn; }

/// Two edges on rays from a frame's origin, the first along its X axis, and a viewer.
struct Corner {
    Rigid frame;
    Rigid viewer;
    std::array<Vec, 2> rays;
    std::array<double, 2> gap{};
    std::array<double, 2> reach{};
    std::array<bool, 2> inwards{};

    explicit Corner(Random& random)
        : frame(Rigid::random(random)), viewer(randomViewer(random, frame.axes[2])) {
        const double angle = random.number(0.15, 0.9 * kHalfTurn);
        rays = {Vec{1, 0, 0}, Vec{std::cos(angle), std::sin(angle), 0}};
        for (std::size_t i = 0; i < 2; ++i) {
            gap[i] = random.number(-20.0, 20.0);
            gap[i] = gap[i] < 0.2 ? 0.0 : gap[i];
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
    /// A text between two sides.
    static Vec between(Random& random, const std::array<Vec, 2>& sides) {
        const double part = random.number(0.1, 0.9);
        return unit(sides[0] * part + sides[1] * (1.0 - part)) * random.number(2.0, 70.0);
    }
};

/// Two arrows on an arc about the vertex, from both sides to the text. They sweep the angle that
/// the text shows: the one about the plane's normal, or in mode 1 the smaller one.
void ExpectArc(const Drawing& drawing, const std::array<Vec, 2>& sides, const Vec& text, int mode) {
    ASSERT_EQ(drawing.leaders.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        ExpectStroke(drawing.leaders[i], sides[i] * length(text), text, kNear);
        ExpectVec3Near(drawing.leaders[i].centre, {}, kNear);
        ExpectArrow(drawing.leaders[i], kNear);
    }
    const Vec normal = drawing.frame.directionBack(drawing.plane.axes[2]);
    const double turn = degrees(turnAbout(normal, sides[0], sides[1]));
    const double small = std::min(turn, 360.0 - turn);
    EXPECT_NEAR(degrees(drawing.leaders[0].sweep() + drawing.leaders[1].sweep()), small, 0.1);
    EXPECT_NEAR(drawing.text.number(), mode == 1 ? small : turn, 0.0055);
    ExpectVec3Near(drawing.text.at, text, kNear);
}

/// On each side the edge and the lines that were drawn lie end to end and reach the arc: no gap,
/// and nothing twice. A special line of no length to speak of does no harm.
void ExpectJoined(const Drawing& drawing, const Corner& corner, const std::array<Vec, 2>& sides,
                  double radius) {
    std::vector<Stroke> strokes = drawing.extensions;
    strokes.insert(strokes.end(), drawing.specials.begin(), drawing.specials.end());
    for (std::size_t i = 0; i < 2; ++i) {
        const Vec& ray = corner.rays[i];
        std::vector<std::array<double, 2>> pieces{{corner.gap[i], corner.reach[i]}};
        for (const Stroke& stroke : strokes) {
            if (length(cross(ray, stroke.from)) + length(cross(ray, stroke.to)) < kNear &&
                length(stroke.to - stroke.from) > 1e-4) {
                const double from = dot(ray, stroke.from);
                const double to = dot(ray, stroke.to);
                pieces.push_back({std::min(from, to), std::max(from, to)});
            }
        }
        std::ranges::sort(pieces);
        for (std::size_t k = 1; k < pieces.size(); ++k) {
            EXPECT_NEAR(pieces[k][0], pieces[k - 1][1], kNear) << "side " << i;
        }
        const double arcEnd = radius * dot(sides[i], ray);
        EXPECT_GE(arcEnd, pieces.front()[0] - 0.011) << "side " << i;
        EXPECT_LE(arcEnd, pieces.back()[1] + 0.011) << "side " << i;
    }
}

/// The angle by the side of its text, and what it hands back.
struct SideAngle {
    Ank_PMI pmi;
    int status = 7;
    int count = 7;
    double specials[4][3] = {};

    void create(int mode, Ank_Line& edge1, Ank_Line& edge2, _ank_locate& place, double* view) {
        PMICreateAngleDim(&mode, &edge1, &edge2, &place, 3.5, &pmi, &status, count, specials, view);
        EXPECT_EQ(status, 0);
        ExpectFlags(pmi, ANK_PMI_ANGLE, true);
    }
};

TEST(AngleTest, LiesOnTheSideOfItsText) {
    Random random(5);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Corner corner(random);
        // In any of the four sectors.
        const std::array<Vec, 2> sides{corner.rays[0] * (i % 2 == 0 ? 1.0 : -1.0),
                                       corner.rays[1] * (i % 4 < 2 ? 1.0 : -1.0)};
        const Vec placed = Corner::between(random, sides);
        _ank_locate place = placedAt(random, corner.frame.point(placed), corner.viewer);
        ViewMatrix view = corner.viewer.view();
        SideAngle angle;
        angle.create(i % 3, *corner.edge(0), *corner.edge(1), place,
                     i % 5 == 0 ? nullptr : view.data());
        const Drawing drawing(angle.pmi, corner.frame);

        ExpectLocated(place, drawing, placed, corner.viewer);
        ExpectArc(drawing, sides, placed, i % 3);
        ExpectJoined(drawing, corner, sides, length(placed));
        EXPECT_EQ(drawing.text.x, Vec());
        // Gaps at the vertex are bridged by the host.
        int count = 0;
        for (std::size_t k = 0; k < 2; ++k) {
            if (corner.gap[k] > 0.01) {
                const Vec to = corner.frame.point(corner.rays[k] * corner.gap[k]);
                ExpectVec3Near(Vec(angle.specials[2 * count]), corner.frame.origin, kNear);
                ExpectVec3Near(Vec(angle.specials[2 * count + 1]), to, kNear);
                ++count;
            }
        }
        EXPECT_EQ(angle.count, count);
        EXPECT_TRUE(drawing.specials.empty());
    }
}

TEST(AngleTest, OfParallelEdgesIsZero) {
    _ank_locate place = locate({5, 4, 0});
    SideAngle angle;
    angle.create(0, *line({0, 0, 0}, {20, 0, 0}), *line({0, 10, 0}, {20, 10, 0}), place, nullptr);
    const Drawing drawing(angle.pmi);
    EXPECT_EQ(drawing.text.line, L"0\u00B0");
    ASSERT_EQ(drawing.leaders.size(), 2U);
    ExpectStroke(drawing.leaders[1], {5, 4, 0}, {5, 4, 0}, 1e-6);
    EXPECT_TRUE(drawing.extensions.empty());
    EXPECT_EQ(angle.count, 0);
}

/// The angle of two picked edges, and what it hands back.
struct PickedAngle {
    std::array<std::unique_ptr<Ank_Line>, 2> edges;
    std::array<_ank_element, 2> elements{};
    Ank_PMI pmi;
    int flags[2] = {7, 7};
    int status = 7;

    PickedAngle(std::unique_ptr<Ank_Line> edge1, const Vec& pick1, std::unique_ptr<Ank_Line> edge2,
                const Vec& pick2)
        : edges{std::move(edge1), std::move(edge2)},
          elements{_ank_element{edges[0].get(), {pick1.x, pick1.y, pick1.z}},
                   _ank_element{edges[1].get(), {pick2.x, pick2.y, pick2.z}}} {}

    void create(int mode, _ank_locate& place, double* view) {
        PMICreateAngleDim3D(&mode, &flags[0], &flags[1], elements.data(), &elements[1], &place,
                            nullptr, nullptr, 3.5, &pmi, &status, view);
        EXPECT_TRUE(flags[0] == 1 && flags[1] == 1);
    }
};

TEST(PickedAngleTest, LiesBetweenThePicksOrOppositeToThem) {
    Random random(6);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Corner corner(random);
        // Each edge may be picked on the other ray of its line, and edge 2 lies above edge 1.
        std::array<Vec, 2> sides{corner.rays[0] * (i % 3 == 0 ? -1.0 : 1.0),
                                 corner.rays[1] * (i % 5 == 0 ? -1.0 : 1.0)};
        const Vec lift{0, 0, i % 2 == 0 ? 0.0 : random.number(-9.0, 9.0)};
        const Vec pick1 = corner.frame.point(sides[0] * random.number(1.0, 50.0));
        const Vec pick2 = corner.frame.point(sides[1] * random.number(1.0, 50.0) + lift);
        if (i % 4 == 0) {
            sides = {sides[0] * -1.0, sides[1] * -1.0};
        }
        const Vec placed = Corner::between(random, sides);
        _ank_locate place = placedAt(random, corner.frame.point(placed), corner.viewer);
        ViewMatrix view = corner.viewer.view();
        const bool seen = i % 7 != 0;
        PickedAngle angle(corner.edge(0), pick1, corner.edge(1, lift.z), pick2);
        angle.create(i % 2, place, seen ? view.data() : nullptr);
        const Drawing drawing(angle.pmi, corner.frame);

        ExpectLocated(place, drawing, placed, corner.viewer);
        ExpectArc(drawing, sides, placed, i % 2);
        ExpectJoined(drawing, corner, sides, length(placed));
        ExpectFlags(angle.pmi, ANK_PMI_ANGLE, true);
        EXPECT_EQ(angle.status, 0);
        EXPECT_NEAR(dot(drawing.text.x, unit(placed)), 0.0, kNear);
        EXPECT_GE(seen ? dot(corner.frame.direction(drawing.text.x), corner.viewer.axes[0]) : 0.0,
                  -1e-5);
        // Edge 2 came down into the plane; the caller's other values are as they were.
        ExpectAnnotationNear(read(*angle.edges[1]), read(*corner.edge(1)), 1e-4);
        EXPECT_EQ(read(*angle.edges[0]), read(*corner.edge(0)));
        EXPECT_EQ(Vec(angle.elements[0].pickPoint), pick1);
        EXPECT_EQ(Vec(angle.elements[1].pickPoint), pick2);
    }
}

TEST(PickedAngleTest, EdgeTouchesTheVertexByItsEndAlone) {
    const Vec nearEnd{0.05, 0, 0};
    const Vec farEnd{40, 0, 0};
    for (const bool endIsNear : {true, false}) {
        auto edge1 = endIsNear ? line(farEnd, nearEnd) : line(nearEnd, farEnd);
        PickedAngle angle(std::move(edge1), {9, 0, 0}, line({}, {0, 40, 0}), {0, 9, 0});
        _ank_locate place = locate({-10, -10, 0});
        angle.create(0, place, nullptr);
        EXPECT_EQ(angle.pmi.GetExLines().size(), 2U);
        EXPECT_EQ(angle.pmi.GetSpecialLines().size(), endIsNear ? 0U : 1U);
    }
}

TEST(PickedAngleTest, OfZeroSetsThePlaneAlone) {
    PickedAngle angle(line({1, 1, 0}, {2, 2, 0}), {1.5, 1.5, 0}, line({4, 4, 0}, {9, 9, 0}),
                      {5, 5, 3});
    _ank_locate place = locate({7, 8, 9});
    angle.create(0, place, nullptr);
    EXPECT_EQ(angle.status, 3);
    EXPECT_EQ(Vec(place.point), Vec(7, 8, 9));
    EXPECT_NEAR(dot(Drawing(angle.pmi).plane.axes[2], {1, 1, 0}), 0.0, 1e-6);
    Ank_PMI withPlane;
    withPlane.SetDefPlane(angle.pmi.GetDefPlane());
    EXPECT_EQ(read(angle.pmi), read(withPlane));
}

TEST(AngleText, ShowsDegrees) {
    const struct {
        double degrees;
        int mode;
        bool clockwise;
        std::wstring text;
    } cases[] = {{90.0, 0, false, L"90\u00B0"},      {45.256, 0, false, L"45.26\u00B0"},
                 {12.5, 1, false, L"12.5\u00B0"},    {90.0, 0, true, L"270\u00B0"},
                 {45.256, 2, true, L"314.74\u00B0"}, {90.0, 1, true, L"90\u00B0"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        const double angle = c.degrees / 180.0 * kHalfTurn;
        Vec end1{20, 0, 0};
        Vec end2{20 * std::cos(angle), 20 * std::sin(angle), 0};
        if (c.clockwise) {
            std::swap(end1, end2);
        }
        ViewMatrix view = Rigid{}.view();
        _ank_locate place = locate(end1 + end2);
        SideAngle bySide;
        bySide.create(c.mode, *line({}, end1), *line({}, end2), place, view.data());
        EXPECT_EQ(valueText(bySide.pmi), c.text);
        place = locate(end1 + end2);
        PickedAngle byPicks(line({}, end1), end1, line({}, end2), end2);
        byPicks.create(c.mode, place, view.data());
        EXPECT_EQ(valueText(byPicks.pmi), c.text);
    }
}

} // namespace
} // namespace dorvale::test
