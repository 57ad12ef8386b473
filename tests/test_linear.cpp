// The linear family: distances drawn parallel to what they measure.
#include <gtest/gtest.h>

#include <optional>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 5e-3;
/// Two points meet within this distance, whose square is 0.1.
constexpr double kMeeting = 0.3163;

/// What a dimension measures, in a frame: from a to b, with the dimension line at an offset from
/// both. Either end may be that of an edge across the measured length.
struct Measured {
    Rigid frame;
    Vec a;
    Vec b;
    /// Where the edges begin and end, across the measured length.
    std::array<double, 2> span{};
    double offset = 0.0;
    double textAlong = 0.0;

    Vec along() const { return unit(b - a); }
    Vec beside(const Vec& point, double by) const { return point + cross({0, 0, 1}, along()) * by; }
    Vec text() const { return beside(a + along() * textAlong, offset); }
    std::unique_ptr<Ank_Line> edge(const Vec& point) const {
        return line(frame.point(beside(point, span[0])), frame.point(beside(point, span[1])));
    }
    std::unique_ptr<Ank_Line> toDimensionLine(const Vec& point) const {
        return line(frame.point(point), frame.point(beside(point, offset)));
    }
    /// Where across the measured length an extension line begins, if there is one.
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
    _ank_locate& place;
    double height;
    Ank_PMI& pmi;
    int& status;
    double* view;
};

struct Member {
    const char* name;
    void (*create)(const Call&);
    bool edgeAtA;
    bool edgeAtB;
    bool isSection;
    bool setsType;
    bool isPlaced;
};

void edgeToEdge(const Call& c) {
    PMICreateLinDistDim3D(c.in.edge(c.in.a).get(), c.in.edge(c.in.b).get(), &c.place, c.height,
                          &c.pmi, &c.status, c.view, nullptr);
}

void edgeToPoint(const Call& c) {
    // The centre of an arc is the point.
    Rigid hole = c.in.frame;
    hole.origin = hole.point(c.in.b);
    PMICreateLinDotDim3D(c.in.edge(c.in.a).get(), circle(hole, 2.0).get(), &c.place, c.height,
                         &c.pmi, &c.status, c.view);
}

void pointToPoint(const Call& c) {
    PMICreateDotDistDim3D(c.in.toDimensionLine(c.in.a).get(), c.in.toDimensionLine(c.in.b).get(),
                          c.height, &c.pmi, &c.status, c.view);
}

void inSection(const Call& c) {
    Vec normal = c.in.frame.axes[2] * 2.5;
    Vec a = c.in.frame.point(c.in.a);
    Vec b = c.in.frame.point(c.in.b);
    PMICreateClipDim3D(&normal.x, &a.x, &b.x, &c.place, c.height, &c.pmi, &c.status, c.view);
}

void edgeToPointInSection(const Call& c) {
    Vec normal = c.in.frame.axes[2] * 0.5;
    Vec origin = c.in.frame.point({-8, 3, 0});
    Vec xPoint = c.in.frame.point({5, 9, 0});
    Ank_PolyLine point;
    point.SetPoints({c.in.frame.point(c.in.b).point32(), {}});
    PMICreateClipLinDotDim3D(&normal.x, &origin.x, &xPoint.x, c.in.edge(c.in.a).get(), &point,
                             &c.place, c.height, &c.pmi, &c.status, c.view);
}

class LinearTest : public testing::TestWithParam<Member> {};

TEST_P(LinearTest, RunsBesideTheMeasuredPairThroughTheText) {
    const Member& member = GetParam();
    Random random(7);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(random);
        Measured in;
        in.frame = Rigid::random(random);
        in.a = {random.number(-50, 50), random.number(-50, 50), 0};
        const double value = random.number(5.0, 80.0);
        const double angle = random.number(0.0, 2.0 * kHalfTurn);
        in.b = in.a + Vec{std::cos(angle), std::sin(angle), 0} * value;
        const double middle = random.number(-30, 30);
        const double half = random.number(8, 20) * (i % 2 == 0 ? 1.0 : -1.0);
        in.span = {middle - half, middle + half};
        // Now and then on the measured points themselves, or right above an end or the middle.
        in.offset = i % 8 == 0 && member.isPlaced ? 0.0 : random.number(-40.0, 40.0);
        in.textAlong = random.number(-0.5, 1.5) * value;
        if (!member.isPlaced) {
            in.textAlong = value / 2.0;
            in.offset += std::copysign(5.0, in.offset);
        } else if (i % 8 == 1) {
            in.textAlong = i % 16 == 1 ? 0.0 : value;
        }
        const bool aboveEnd =
            std::min(std::abs(in.textAlong), std::abs(in.textAlong - value)) < kMeeting;
        const Rigid viewer = randomViewer(random, in.frame.axes[2]);
        ViewMatrix view = viewer.view();
        const bool seen = i % 5 != 0;
        _ank_locate place = placedAt(random, in.frame.point(in.text()), viewer);
        int status = 7;
        Ank_PMI pmi;
        pmi.SetType(ANK_PMI_CLIP_ARC);
        pmi.SetParallelScreen(i % 2 == 0);
        member.create({in, place, i % 3 == 0 ? -1.0 : random.number(1.0, 9.0), pmi, status,
                       seen ? view.data() : nullptr});
        const Drawing drawing(pmi, in.frame);

        EXPECT_EQ(status, 0);
        ExpectFlags(pmi, member.setsType ? ANK_PMI_LINEAR : ANK_PMI_CLIP_ARC, i % 2 == 0);
        EXPECT_NEAR(drawing.text.number(), value, 0.0051 + 2e-4);
        if (member.isPlaced) {
            ExpectLocated(place, drawing, in.frame.point(in.text()), viewer);
        }
        const Vec ends[] = {in.beside(in.a, in.offset), in.beside(in.b, in.offset)};
        ASSERT_EQ(drawing.leaders.size(), 2U);
        for (std::size_t k = 0; k < 2; ++k) {
            ExpectStroke(drawing.leaders[k], ends[k],
                         aboveEnd ? (ends[0] + ends[1]) * 0.5 : in.text(), kNear);
            ExpectArrow(drawing.leaders[k], kNear);
            EXPECT_NEAR(std::abs(dot(drawing.leaders[k].along, in.along())), 1.0, kNear);
        }
        std::vector<Stroke> extensions;
        if (const auto from = in.extension(member.edgeAtA)) {
            extensions.push_back({in.beside(in.a, *from), ends[0]});
        }
        if (const auto from = in.extension(member.edgeAtB)) {
            extensions.push_back({in.beside(in.b, *from), ends[1]});
        }
        ASSERT_EQ(drawing.extensions.size(), extensions.size());
        for (std::size_t k = 0; k < extensions.size(); ++k) {
            ExpectStroke(drawing.extensions[k], extensions[k].from, extensions[k].to, kNear);
        }
        // Centred by its own box, along the measured pair, and readable.
        ExpectVec3Near((drawing.text.at + drawing.text.boxEnd) * 0.5, in.text(), kNear);
        const Vec textX = in.frame.direction(drawing.text.x);
        const Vec textY = in.frame.direction(drawing.text.y);
        EXPECT_NEAR(std::abs(dot(drawing.text.x, in.along())), 1.0, kNear);
        EXPECT_NEAR(dot(cross(textX, textY), drawing.plane.axes[2]), 1.0, kNear);
        if (seen) {
            EXPECT_GE(dot(textX, viewer.axes[0]), -1e-6);
            EXPECT_TRUE(member.isSection || dot(cross(textX, textY), viewer.axes[2]) > 0.0);
        } else {
            ExpectVec3Near(drawing.text.x, in.along(), kNear);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Members, LinearTest,
    testing::Values(Member{"EdgeToEdge", edgeToEdge, true, true, false, true, true},
                    Member{"EdgeToPoint", edgeToPoint, true, false, false, true, true},
                    Member{"PointToPoint", pointToPoint, false, false, false, true, false},
                    Member{"InSection", inSection, false, false, true, false, true},
                    Member{"EdgeToPointInSection", edgeToPointInSection, true, false, true, true,
                           true}),
    [](const auto& member) { return member.param.name; });

TEST(LinearEdges, MayBeParallelOnlyNearly) {
    for (const double slope : {0.0, 1e-5, 2e-4, 1e-3}) {
        SCOPED_TRACE(slope);
        const auto edge1 = line({-50, 0, 4}, {50, 0, 4});
        const auto edge2 = line({-50, 10 - 50 * slope, 4}, {50, 10 + 50 * slope, 4});
        _ank_locate place = locate({0, 6, 30});
        int status = 7;
        Ank_PMI pmi;
        PMICreateLinDistDim3D(edge1.get(), edge2.get(), &place, 3.5, &pmi, &status, nullptr,
                              nullptr);
        const Drawing drawing(pmi, {});
        EXPECT_EQ(drawing.text.line, L"10.00");
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], {0, 0, 4}, {0, 6, 4}, 0.02);
        ExpectStroke(drawing.leaders[1], {0, 10, 4}, {0, 6, 4}, 0.02);
    }
}

TEST(LinearEdges, MayHoldTheMeasuredPoint) {
    const auto edge = line({0, 0, 0}, {20, 0, 0});
    const auto point = line({5, 0, 0}, {5, 9, 0});
    Vec normal{0, 0, 1};
    Vec origin;
    Vec xPoint{1, 1, 0};
    for (const bool section : {false, true}) {
        _ank_locate place = locate({8, 3, 0});
        int status = 7;
        Ank_PMI pmi;
        if (section) {
            PMICreateClipLinDotDim3D(&normal.x, &origin.x, &xPoint.x, edge.get(), point.get(),
                                     &place, 3.5, &pmi, &status, nullptr);
        } else {
            PMICreateLinDotDim3D(edge.get(), point.get(), &place, 3.5, &pmi, &status, nullptr);
        }
        EXPECT_EQ(status, 0);
        EXPECT_EQ(valueText(pmi), L"0.00");
    }
}

} // namespace
} // namespace dorvale::test
