// The linear family: distances drawn parallel to what they measure.
#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;
/// Two points meet within this distance, whose square is 0.1.
constexpr double kMeeting = 0.3163;

/// What a dimension measures: in a frame, from its origin along its X axis. The dimension line
/// stands at an offset in Y. Either end may be that of an edge along Y.
struct Measured {
    Rigid frame;
    double value = 0.0;
    double offset = 0.0;
    double textX = 0.0;
    /// Where the edges begin and end.
    std::array<double, 2> span{};

    double x(std::size_t end) const { return end == 0 ? 0.0 : value; }
    Vec point(std::size_t end) const { return frame.point({x(end), 0, 0}); }
    std::unique_ptr<Ank_Line> lineAt(std::size_t end, double from, double to) const {
        return line(frame.point({x(end), from, 0}), frame.point({x(end), to, 0}));
    }
    std::unique_ptr<Ank_Line> edge(std::size_t end) const { return lineAt(end, span[0], span[1]); }
    /// Where an extension line begins, if there is one.
    std::optional<double> extension(bool fromEdge) const {
        const auto [low, high] = std::minmax(span[0], span[1]);
        if (fromEdge && low - 0.01 <= offset && offset <= high + 0.01) {
            return std::nullopt;
        }
        const double from = !fromEdge ? 0.0 : offset < low ? low : high;
        return std::abs(offset - from) <= kMeeting ? std::nullopt : std::optional(from);
    }
};

struct Call {
    const Measured& in;
    _ank_locate* place;
    double height;
    Ank_PMI* pmi;
    int* status;
    double* view;
};

void edgeToEdge(const Call& c) {
    PMICreateLinDistDim3D(c.in.edge(0).get(), c.in.edge(1).get(), c.place, c.height, c.pmi,
                          c.status, c.view, nullptr);
}
void edgeToPoint(const Call& c) {
    Rigid hole = c.in.frame;
    hole.origin = c.in.point(1);
    PMICreateLinDotDim3D(c.in.edge(0).get(), circle(hole, 2.0).get(), c.place, c.height, c.pmi,
                         c.status, c.view);
}
void pointToPoint(const Call& c) {
    PMICreateDotDistDim3D(c.in.lineAt(0, 0.0, c.in.offset).get(),
                          c.in.lineAt(1, 0.0, c.in.offset).get(), c.height, c.pmi, c.status,
                          c.view);
}
void inSection(const Call& c) {
    Vec normal = c.in.frame.axes[2] * 2.5;
    Vec a = c.in.point(0);
    Vec b = c.in.point(1);
    PMICreateClipDim3D(&normal.x, &a.x, &b.x, c.place, c.height, c.pmi, c.status, c.view);
}
void edgeToPointInSection(const Call& c) {
    Vec normal = c.in.frame.axes[2] * 0.5;
    Vec origin = c.in.frame.point({-8, 3, 0});
    Vec xPoint = c.in.frame.point({5, 9, 0});
    Ank_PolyLine point;
    point.SetPoints({c.in.point(1).point32(), {}});
    PMICreateClipLinDotDim3D(&normal.x, &origin.x, &xPoint.x, c.in.edge(0).get(), &point, c.place,
                             c.height, c.pmi, c.status, c.view);
}

struct Member {
    const char* name;
    void (*create)(const Call&);
    /// Which ends are edges.
    std::array<bool, 2> edges;
    AnkPMITypeEnum type = ANK_PMI_LINEAR;
    bool isSection = false;

    bool isPlaced() const { return create != pointToPoint; }
};

constexpr AnkPMITypeEnum kTypeBefore = ANK_PMI_CLIP_ARC;

class LinearTest : public testing::TestWithParam<Member> {};

TEST_P(LinearTest, RunsBesideTheMeasuredPairThroughTheText) {
    const Member& member = GetParam();
    Random random(7);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(random);
        Measured in{Rigid::random(random), random.number(5.0, 80.0), random.number(5.0, 40.0)};
        const double middle = random.number(-30, 30);
        in.span = {middle - random.number(8, 20), middle + random.number(8, 20)};
        in.textX = random.number(-0.5, 1.5) * in.value;
        if (i % 2 == 0) {
            in.offset *= -1.0;
            std::swap(in.span[0], in.span[1]);
        }
        // Now and then on the measured points themselves, or right above an end.
        if (!member.isPlaced()) {
            in.textX = in.value / 2.0;
        } else if (i % 8 == 0) {
            in.offset = 0.0;
        } else if (i % 8 == 1) {
            in.textX = i % 16 == 1 ? 0.0 : in.value;
        }
        const bool aboveEnd =
            std::min(std::abs(in.textX), std::abs(in.textX - in.value)) < kMeeting;
        const Vec text{in.textX, in.offset, 0};
        const Rigid viewer = randomViewer(random, in.frame.axes[2]);
        ViewMatrix view = viewer.view();
        const bool seen = i % 5 != 0;
        _ank_locate place = placedAt(random, in.frame.point(text), viewer);
        int status = 7;
        Ank_PMI pmi;
        pmi.SetType(kTypeBefore);
        pmi.SetParallelScreen(i % 2 == 0);
        member.create({in, &place, i % 3 == 0 ? -1.0 : random.number(1.0, 9.0), &pmi, &status,
                       seen ? view.data() : nullptr});
        const Drawing drawing(pmi, in.frame);

        EXPECT_EQ(status, 0);
        ExpectFlags(pmi, member.type, i % 2 == 0);
        EXPECT_NEAR(drawing.text.number(), in.value, 0.0053);
        if (member.isPlaced()) {
            ExpectLocated(place, drawing, text, viewer);
        }
        ASSERT_EQ(drawing.leaders.size(), 2U);
        std::size_t extensions = 0;
        for (std::size_t end = 0; end < 2; ++end) {
            const Vec tip{in.x(end), in.offset, 0};
            ExpectStroke(drawing.leaders[end], tip,
                         aboveEnd ? Vec{in.value / 2.0, in.offset, 0} : text, kNear);
            ExpectArrow(drawing.leaders[end], kNear);
            if (const auto from = in.extension(member.edges[end])) {
                ASSERT_LT(extensions, drawing.extensions.size());
                ExpectStroke(drawing.extensions[extensions++], {in.x(end), *from, 0}, tip, kNear);
            }
        }
        EXPECT_EQ(drawing.extensions.size(), extensions);
        // Centred by its own box, along the measured pair, and readable.
        ExpectVec3Near((drawing.text.at + drawing.text.boxEnd) * 0.5, text, kNear);
        const Vec textX = in.frame.direction(drawing.text.x);
        const Vec normal = cross(textX, in.frame.direction(drawing.text.y));
        EXPECT_NEAR(std::abs(drawing.text.x.x), 1.0, kNear);
        ExpectVec3Near(normal, drawing.plane.axes[2], kNear);
        EXPECT_GE(dot(textX, seen ? viewer.axes[0] : in.frame.axes[0]), -1e-6);
        EXPECT_TRUE(!seen || member.isSection || dot(normal, viewer.axes[2]) > 0.0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Members, LinearTest,
    testing::Values(
        Member{"EdgeToEdge", edgeToEdge, {true, true}},
        Member{"EdgeToPoint", edgeToPoint, {true, false}},
        Member{"PointToPoint", pointToPoint, {false, false}},
        Member{"InSection", inSection, {false, false}, kTypeBefore, true},
        Member{"EdgeToPointInSection", edgeToPointInSection, {true, false}, ANK_PMI_LINEAR, true}),
    [](const auto& member) { return member.param.name; });

TEST(LinearEdges, EdgesMayBeParallelOnlyNearly) {
    for (const double slope : {0.0, 1e-5, 2e-4, 1e-3}) {
        SCOPED_TRACE(slope);
        _ank_locate place = locate({0, 6, 30});
        int status = 7;
        Ank_PMI pmi;
        PMICreateLinDistDim3D(line({-50, 0, 4}, {50, 0, 4}).get(),
                              line({-50, 10 - 50 * slope, 4}, {50, 10 + 50 * slope, 4}).get(),
                              &place, 3.5, &pmi, &status, nullptr, nullptr);
        const Drawing drawing(pmi);
        EXPECT_EQ(drawing.text.line, L"10.00");
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], {0, 0, 4}, {0, 6, 4}, 0.02);
        ExpectStroke(drawing.leaders[1], {0, 10, 4}, {0, 6, 4}, 0.02);
    }
}

TEST(LinearEdges, PointMayLieOnTheEdge) {
    const auto edge = line({0, 0, 0}, {20, 0, 0});
    const auto point = line({5, 0, 0}, {5, 9, 0});
    double vectors[3][3] = {{0, 0, 1}, {0, 0, 0}, {1, 1, 0}};
    _ank_locate place = locate({8, 3, 0});
    int status = 7;
    Ank_PMI pmi;
    PMICreateLinDotDim3D(edge.get(), point.get(), &place, 3.5, &pmi, &status, nullptr);
    EXPECT_EQ(valueText(pmi), L"0.00");
    EXPECT_EQ(std::exchange(status, 7), 0);
    Ank_PMI cut;
    PMICreateClipLinDotDim3D(vectors[0], vectors[1], vectors[2], edge.get(), point.get(), &place,
                             3.5, &cut, &status, nullptr);
    EXPECT_EQ(valueText(cut), L"0.00");
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace dorvale::test
