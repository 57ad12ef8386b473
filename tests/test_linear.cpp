// The linear family: distances drawn parallel to what they measure.
#include "drawing.h"

#include <optional>

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;
/// Two points meet within this distance, whose square is 0.1.
constexpr double kMeeting = 0.3163;

struct Member {
    const char* call;
    /// Which ends are edges.
    std::array<bool, 2> edges;
    AnkPMITypeEnum type = ANK_PMI_LINEAR;
    bool isSection = false;
    /// The text point is given.
    bool isPlaced = true;

    friend std::ostream& operator<<(std::ostream& out, const Member& member) {
        return out << member.call;
    }
};

/// What a dimension measures: along a frame's X axis, from its origin. The dimension line stands at
/// an offset in Y. Either end may be that of an edge along Y.
struct Measured {
    double value;
    double offset;
    double textX;
    /// Where the edges begin and end.
    std::array<double, 2> span;

    static Measured random(Random& random, int i, const Member& member) {
        const double middle = random.number(-30, 30);
        Measured in{random.number(5.0, 80.0),
                    random.number(5.0, 40.0),
                    0.0,
                    {middle - random.number(8, 20), middle + random.number(8, 20)}};
        in.textX = random.number(-0.5, 1.5) * in.value;
        if (i % 2 == 0) {
            in.offset *= -1.0;
            std::swap(in.span[0], in.span[1]);
        }
        // Now and then on the measured points themselves, or right above an end.
        if (!member.isPlaced) {
            in.textX = in.value / 2.0;
            in.span = {0.0, in.offset};
        } else if (i % 8 == 0) {
            in.offset = 0.0;
        } else if (i % 8 == 1) {
            in.textX = i % 16 == 1 ? 0.0 : in.value;
        }
        return in;
    }
    double x(std::size_t end) const { return end == 0 ? 0.0 : value; }
    Vec text() const { return {textX, offset, 0.0}; }
    Vec meeting() const {
        const double toEnd = std::min(std::abs(textX), std::abs(textX - value));
        return toEnd < kMeeting ? Vec{value / 2.0, offset, 0.0} : text();
    }
    /// Where an extension line begins, if there is one.
    std::optional<double> extension(bool fromEdge) const {
        const auto [low, high] = std::minmax(span[0], span[1]);
        if (fromEdge && low - 0.01 <= offset && offset <= high + 0.01) {
            return std::nullopt;
        }
        const double from = !fromEdge ? 0.0 : offset < low ? low : high;
        return std::abs(offset - from) <= kMeeting ? std::nullopt : std::optional(from);
    }
    Record record(const Member& member) const {
        Record record;
        for (std::size_t end = 0; end < 2; ++end) {
            set(record.lineEnds[end], {x(end), span[0], 0.0}, {x(end), span[1], 0.0});
        }
        for (double* p : {record.center, record.points[0]}) {
            set(p, {value, 0.0, 0.0});
        }
        // The section of two points is theirs.
        set(record.origin, member.edges[0] ? Vec{-8, 3, 0} : Vec());
        set(record.xPoint, member.edges[0] ? Vec{5, 9, 0} : Vec{value, 0.0, 0.0});
        set(record.place, text());
        return record;
    }
};

class LinearTest : public testing::TestWithParam<Member> {};

TEST_P(LinearTest, RunsBesideTheMeasuredPairThroughTheText) {
    const Member& member = GetParam();
    Random random(7);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(random);
        const Measured in = Measured::random(random, i, member);
        const Rigid frame = Rigid::random(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        Record record = standing(in.record(member), frame, viewer, random.number(-50, 50));
        record.height = i % 3 == 0 ? -1.0 : random.number(1.0, 9.0);
        record.noView = i % 5 == 0 ? 1 : 0;
        const Made made(member.call, record, i % 2 == 0);
        const Drawing drawing(made.pmi, frame);

        ExpectFlags(made, member.type, i % 2 == 0);
        EXPECT_NEAR(drawing.text.number(), in.value, 0.0053);
        if (member.isPlaced) {
            ExpectLocated(made, drawing, in.text());
        }
        ASSERT_EQ(drawing.leaders.size(), 2U);
        std::size_t extensions = 0;
        for (std::size_t end = 0; end < 2; ++end) {
            const Vec tip{in.x(end), in.offset, 0.0};
            ExpectArrow(drawing.leaders[end], tip, in.meeting(), kNear);
            if (const auto from = in.extension(member.edges[end])) {
                ASSERT_LT(extensions, drawing.extensions.size());
                ExpectStroke(drawing.extensions[extensions++], {in.x(end), *from, 0}, tip, kNear);
            }
        }
        EXPECT_EQ(drawing.extensions.size(), extensions);
        // Centred by its own box, along the measured pair, and readable.
        const Element& text = drawing.text;
        ExpectVec3Near((text.vec("at") + drawing.blocks.at(0).vec("box", 1)) * 0.5, in.text(),
                       kNear);
        const Vec textX = frame.direction(text.vec("x"));
        const Vec normal = cross(textX, frame.direction(text.vec("y")));
        EXPECT_NEAR(std::abs(text.vec("x").x), 1.0, kNear);
        ExpectVec3Near(normal, drawing.plane.axes[2], kNear);
        const bool seen = made.noView == 0;
        EXPECT_GE(dot(textX, seen ? viewer.axes[0] : frame.axes[0]), -1e-6);
        EXPECT_TRUE(!seen || member.isSection || dot(normal, viewer.axes[2]) > 0.0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Linear, LinearTest,
    testing::Values(Member{"PMICreateLinDistDim3D", {true, true}},
                    Member{"PMICreateLinDotDim3D", {true, false}},
                    Member{"PMICreateDotDistDim3D", {false, false}, ANK_PMI_LINEAR, false, false},
                    Member{"PMICreateClipDim3D", {false, false}, kTypeBefore, true},
                    Member{"PMICreateClipLinDotDim3D", {true, false}, ANK_PMI_LINEAR, true}),
    [](const auto& member) { return std::string(member.param.call); });

TEST(LinearEdges, EdgesMayBeParallelOnlyNearly) {
    for (const double slope : {0.0, 1e-5, 2e-4, 1e-3}) {
        SCOPED_TRACE(slope);
        Record record =
            edges({-50, 0, 4}, {50, 0, 4}, {-50, 10 - 50 * slope, 4}, {50, 10 + 50 * slope, 4});
        set(record.place, {0, 6, 30});
        const Drawing drawing(Made("PMICreateLinDistDim3D", record).pmi);
        EXPECT_EQ(drawing.text.line(), L"10.00");
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], {0, 0, 4}, {0, 6, 4}, 0.02);
        ExpectStroke(drawing.leaders[1], {0, 10, 4}, {0, 6, 4}, 0.02);
    }
}

TEST(LinearEdges, PlaneStartsWhereTheLinesCross) {
    // Edges that meet in (20, 10, 5), within them or beyond their ends; a point whose foot that is;
    // and the lines of two points.
    for (const double from : {-8.0, 3.0}) {
        Record record = edges({20 + from, 10, 5}, {80, 10, 5}, {20, 10 + from, 5}, {20, 70, 5});
        set(record.center, {20, 30, 5});
        set(record.place, {40, 30, 5});
        for (const char* call :
             {"PMICreateLinDistDim3D", "PMICreateLinDotDim3D", "PMICreateDotDistDim3D"}) {
            const Made made(call, record);
            ExpectVec3Near(Drawing(made.pmi).plane.origin, {20, 10, 5}, 1e-5);
        }
    }
}

TEST(LinearEdges, PointsKeepTheirDistanceInSpaceAndTheEndsOfTheirLines) {
    const Record record = edges({0, 0, 0}, {0, 5, 0}, {30, 0, 40}, {36, 9, 40});
    const Drawing drawing(Made("PMICreateDotDistDim3D", record).pmi);
    EXPECT_EQ(drawing.text.line(), L"50.00");
    ASSERT_EQ(drawing.leaders.size(), 2U);
    // Seen in the plane of the first line.
    ExpectVec3Near(drawing.leaders[0].from(), {0, 5, 0}, 1e-5);
    ExpectVec3Near(drawing.leaders[1].from(), {36, 9, 0}, 1e-5);
}

TEST(LinearEdges, PointMayLieOnTheEdge) {
    Record record;
    for (double* p : {record.center, record.points[0], record.origin}) {
        set(p, {50, 0, 0});
    }
    for (const char* call : {"PMICreateLinDotDim3D", "PMICreateClipLinDotDim3D"}) {
        const Made made(call, record);
        EXPECT_EQ(Drawing(made.pmi).text.line(), L"0.00");
        EXPECT_EQ(made.status, 0);
    }
}

} // namespace
} // namespace dorvale::test
