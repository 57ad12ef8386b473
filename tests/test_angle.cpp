// The angle of two edges, by the side of its text and by picks.
#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;

double degrees(double radians) { return radians * 180.0 / kHalfTurn; }

/// Two edges on rays from the origin, the first along the X axis; the second one may lie above.
struct Corner {
    std::array<Vec, 2> rays;
    std::array<double, 2> gap{};
    std::array<double, 2> reach{};
    Record record;

    explicit Corner(Random& random)
        : rays{towards(0.0), towards(random.number(0.15, 0.9 * kHalfTurn))} {
        for (std::size_t i = 0; i < 2; ++i) {
            gap[i] = random.number(-20.0, 20.0);
            gap[i] = gap[i] < 0.2 ? 0.0 : gap[i];
            reach[i] = gap[i] + random.number(10.0, 40.0);
            const bool inwards = random.number(0, 1) < 0.5;
            set(record.lineEnds[i], rays[i] * (inwards ? reach : gap)[i],
                rays[i] * (inwards ? gap : reach)[i]);
        }
    }
};

/// Two arrows on an arc about the vertex, from both sides to the text. They sweep the angle that
/// the text shows: the one about the plane's normal, or in mode 1 the smaller one.
void ExpectArc(const Drawing& drawing, const std::array<Vec, 2>& sides, const Vec& text, int mode) {
    ASSERT_EQ(drawing.leaders.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        ExpectArrow(drawing.leaders[i], sides[i] * length(text), text, kNear);
        ExpectVec3Near(drawing.leaders[i].vec("point", 2), {}, kNear);
    }
    const Vec normal = drawing.frame.directionBack(drawing.plane.axes[2]);
    const double turn = degrees(turnAbout(normal, sides[0], sides[1]));
    const double small = std::min(turn, 360.0 - turn);
    EXPECT_NEAR(degrees(sweepOf(drawing.leaders[0]) + sweepOf(drawing.leaders[1])), small, 0.1);
    EXPECT_NEAR(drawing.text.number(), mode == 1 ? small : turn, 0.0055);
    ExpectVec3Near(drawing.text.vec("at"), text, kNear);
}

/// On each side the edge and the lines that were drawn lie end to end and reach the arc: no gap,
/// and nothing twice. A special line of no length to speak of does no harm.
void ExpectJoined(const Drawing& drawing, const Corner& corner, const std::array<Vec, 2>& sides,
                  double radius) {
    std::vector<Element> strokes = drawing.extensions;
    strokes.insert(strokes.end(), drawing.specials.begin(), drawing.specials.end());
    for (std::size_t i = 0; i < 2; ++i) {
        const Vec& ray = corner.rays[i];
        std::vector<std::array<double, 2>> pieces{{corner.gap[i], corner.reach[i]}};
        for (const Element& stroke : strokes) {
            if (length(cross(ray, stroke.from())) + length(cross(ray, stroke.to())) < kNear &&
                length(stroke.to() - stroke.from()) > 1e-4) {
                const double from = dot(ray, stroke.from());
                const double to = dot(ray, stroke.to());
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

/// By the side of the text, and by picks.
class AngleTest : public testing::TestWithParam<const char*> {
protected:
    static bool isPicked() { return GetParam() == std::string_view("PMICreateAngleDim3D"); }
};

/// The edges' gaps at the vertex are bridged by the host.
void ExpectGapsHandedBack(const Made& made, const Rigid& frame, const Corner& corner) {
    std::vector<Vec> ends;
    for (std::size_t k = 0; k < 2; ++k) {
        if (corner.gap[k] > 0.01) {
            ends.push_back(frame.origin);
            ends.push_back(frame.point(corner.rays[k] * corner.gap[k]));
        }
    }
    EXPECT_EQ(made.handedBack<int>("specialLineCount"), static_cast<int>(ends.size() / 2));
    EXPECT_EQ(made.handed.callerLines.size(), ends.size() / 2);
    ends.resize(4, frame.origin);
    const auto& handedBack = made.handedBack<std::array<host::Vec3, 4>>("specialLines");
    for (std::size_t i = 0; i < 4; ++i) {
        ExpectVec3Near(Vec(handedBack.at(i).data()), ends[i], kNear);
    }
}

/// Edge 2 has come down into the plane; the caller's other values are as they were.
void ExpectCoplanar(const Made& made, const Rigid& frame, const Corner& corner) {
    EXPECT_TRUE(made.handedBack<int>("flag1") == 1 && made.handedBack<int>("flag2") == 1);
    const auto& edge1 = made.handedBack<host::MovedLine>("edge1");
    const auto& edge2 = made.handedBack<host::MovedLine>("edge2");
    EXPECT_EQ(Vec(edge1.start), Vec(made.lines[0].GetStartPoint()));
    EXPECT_EQ(Vec(edge1.end), Vec(made.lines[0].GetEndPoint()));
    const auto& [start, end] = corner.record.lineEnds[1];
    ExpectVec3Near(edge2.start, frame.point(Vec(start)), 1e-4);
    ExpectVec3Near(edge2.end, frame.point(Vec(end)), 1e-4);
    EXPECT_EQ(Vec(made.handedBack<host::Vec3>("pick1").data()), Vec(made.picks[0]));
    EXPECT_EQ(Vec(made.handedBack<host::Vec3>("pick2").data()), Vec(made.picks[1]));
}

TEST_P(AngleTest, LiesBetweenItsSides) {
    Random random(5);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const Corner corner(random);
        // Each edge may be picked on the other ray of its line, and the text be in the opposite
        // sector.
        const double opposite = i % 4 == 0 ? -1.0 : 1.0;
        const std::array<Vec, 2> sides{corner.rays[0] * (i % 3 == 0 ? -1.0 : 1.0),
                                       corner.rays[1] * (i % 5 == 0 ? -1.0 : 1.0)};
        const double part = random.number(0.1, 0.9);
        const Vec placed =
            unit(sides[0] * part + sides[1] * (1.0 - part)) * random.number(2.0, 70.0);
        const Vec lift{0, 0, isPicked() && i % 2 == 0 ? random.number(-9.0, 9.0) : 0.0};
        Record record = corner.record;
        record.mode = i % 3;
        for (double* end : record.lineEnds[1]) {
            set(end, Vec(end) + lift);
        }
        set(record.picks[0], sides[0] * opposite * random.number(1.0, 50.0));
        set(record.picks[1], sides[1] * opposite * random.number(1.0, 50.0) + lift);
        set(record.place, placed);
        record.noView = i % 7 == 0 ? 1 : 0;
        const Made made(GetParam(), standing(record, frame, viewer, random.number(-50, 50)));
        const Drawing drawing(made.pmi, frame);

        ExpectFlags(made, ANK_PMI_ANGLE, true);
        ExpectLocated(made, drawing, placed);
        ExpectArc(drawing, sides, placed, record.mode);
        ExpectJoined(drawing, corner, sides, length(placed));
        if (isPicked()) {
            ExpectCoplanar(made, frame, corner);
            EXPECT_NEAR(dot(drawing.text.vec("x"), unit(placed)), 0.0, kNear);
            const double alongView = dot(frame.direction(drawing.text.vec("x")), viewer.axes[0]);
            EXPECT_GE(made.noView != 0 ? 0.0 : alongView, -1e-5);
        } else {
            ExpectGapsHandedBack(made, frame, corner);
            EXPECT_TRUE(drawing.specials.empty());
            EXPECT_EQ(drawing.text.vec("x"), Vec());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Angle, AngleTest,
                         testing::Values("PMICreateAngleDim", "PMICreateAngleDim3D"),
                         [](const auto& call) { return std::string(call.param); });

TEST(AngleOfSide, OfParallelEdgesIsZero) {
    Record record = edges({0, 0, 0}, {20, 0, 0}, {0, 10, 0}, {20, 10, 0});
    set(record.place, {5, 4, 0});
    const Made made("PMICreateAngleDim", record);
    const Drawing drawing(made.pmi);
    EXPECT_EQ(drawing.text.line(), L"0\u00B0");
    ASSERT_EQ(drawing.leaders.size(), 2U);
    ExpectStroke(drawing.leaders[1], {5, 4, 0}, {5, 4, 0}, 1e-6);
    EXPECT_TRUE(drawing.extensions.empty());
    EXPECT_EQ(made.handedBack<int>("specialLineCount"), 0);
}

TEST(AngleOfPicks, EdgeTouchesTheVertexByItsEndAlone) {
    Vec start{0.05, 0, 0};
    Vec end{40, 0, 0};
    for (const std::size_t specials : {1U, 0U}) {
        Record record = edges(start, end, {}, {0, 40, 0});
        set(record.picks[0], {9, 0, 0});
        set(record.picks[1], {0, 9, 0});
        set(record.place, {-10, -10, 0});
        const Drawing drawing(Made("PMICreateAngleDim3D", record).pmi);
        EXPECT_EQ(drawing.extensions.size(), 2U);
        EXPECT_EQ(drawing.specials.size(), specials);
        std::swap(start, end);
    }
}

TEST(AngleOfPicks, DirectionsAreTheSameBelowOneDegree) {
    // An edge of half the arc's radius: along it the arc is out of its reach, on the other side of
    // the vertex as well. The pick that stands 1 degree off is exact.
    const double degree = kHalfTurn / 180.0;
    const Vec off = towards(degree);
    ASSERT_EQ(dot(off, off), 1.0);
    ASSERT_EQ(degrees(std::atan2(off.y, off.x)), 1.0);
    const std::pair<Vec, std::size_t> cases[] = {
        {towards(0.999 * degree), 2}, {off, 1},
        {towards(1.001 * degree), 1}, {towards(kHalfTurn - 1.001 * degree), 1},
        {{-off.x, off.y, 0}, 2},
    };
    for (const auto& [pick, extensions] : cases) {
        SCOPED_TRACE(pick);
        Record record = edges({0.5, 0, 0}, {}, {}, {0, 0.5, 0});
        set(record.picks[0], pick);
        set(record.picks[1], {0, 1, 0});
        set(record.place, {pick.x < 0.0 ? -0.6 : 0.6, 0.8, 0});
        EXPECT_EQ(Drawing(Made("PMICreateAngleDim3D", record).pmi).extensions.size(), extensions);
    }
}

TEST(AngleOfPicks, OfZeroSetsThePlaneAlone) {
    Record record = edges({1, 1, 0}, {2, 2, 0}, {4, 4, 0}, {9, 9, 0});
    set(record.picks[0], {1.5, 1.5, 0});
    set(record.picks[1], {5, 5, 3});
    const Made made("PMICreateAngleDim3D", record);
    EXPECT_EQ(made.status, 3);
    EXPECT_EQ(Vec(made.locate.point), Vec(record.place));
    EXPECT_NEAR(dot(Drawing(made.pmi).plane.axes[2], {1, 1, 0}), 0.0, 1e-6);
    Ank_PMI withPlane;
    withPlane.SetDefPlane(made.pmi.GetDefPlane());
    withPlane.SetType(kTypeBefore);
    EXPECT_EQ(read(made.pmi), read(withPlane));
}

} // namespace
} // namespace dorvale::test
