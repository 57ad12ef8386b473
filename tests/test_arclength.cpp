// The length of an arc or of a straight edge, in the curve's own plane or in a section.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 2e-3;

class ArcLengthTest : public testing::TestWithParam<bool> {
protected:
    bool clipped() const { return GetParam(); }

    /// Builds the dimension of a curve in a frame's XY plane.
    Drawing create(const Rigid& frame, Ank_CurveEntity& curve, _ank_locate& place, double* view,
                   Ank_Line* line1, Ank_Line* line2) {
        int status = 7;
        Ank_PMI pmi;
        pmi.SetType(ANK_PMI_LINEAR);
        if (clipped()) {
            Vec normal = frame.axes[2] * 2.5;
            Vec corner = frame.point({-7, 3, 0});
            Vec xPoint = frame.point({5, 8, 0});
            PMICreateClipArcDim3D(nullptr, &normal.x, &corner.x, &xPoint.x, &curve, &place, 3.5,
                                  &pmi, &status, view, line1, line2);
        } else {
            PMICreateArcDim3D(nullptr, &curve, &place, 3.5, &pmi, &status, view, line1, line2);
        }
        EXPECT_EQ(status, 0);
        const bool arc = curve.GetCurveType() == ANK_CURVE_ARC;
        ExpectFlags(pmi, clipped() && arc ? ANK_PMI_CLIP_ARC : ANK_PMI_LINEAR, !clipped());
        return {pmi, frame};
    }
};

/// The text stands at its place and is tangent to the arc at a point within its own width.
void ExpectTangentText(const DrawnText& text, const Vec& placed) {
    ExpectVec3Near(text.at, placed, kNear);
    EXPECT_NEAR(length(text.x), 1.0, 1e-5);
    EXPECT_NEAR(dot(text.x, text.y), 0.0, 1e-5);
    const double touching = -dot(text.at, text.x);
    EXPECT_GT(touching, 0.0);
    EXPECT_LE(touching, static_cast<double>(text.line.size()) * text.height / std::sqrt(2.0) * 0.5);
}

TEST_P(ArcLengthTest, RunsConcentricallyThroughThePlacement) {
    Random random(3);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const double radius = random.number(5.0, 40.0);
        const double start = random.number(0.0, 2.0 * kHalfTurn);
        const double sweep = i % 10 == 0 ? kHalfTurn : random.number(0.2, 2.0 * kHalfTurn - 0.2);
        const auto curve = arc(frame, radius, start, start + sweep);
        // Lines in the other order measure the other way round.
        const bool otherWay = i % 3 == 0;
        const double measured = otherWay ? sweep - 2.0 * kHalfTurn : sweep;
        const auto line1 = line(frame.point({1, 1, 0}), frame.point({9, otherWay ? -1.0 : 2.0, 0}));
        const auto line2 = line(frame.point({1, 2, 0}), frame.point({9, otherWay ? 2.0 : 9.0, 0}));

        const auto at = [](double angle, double r) {
            return Vec{r * std::cos(angle), r * std::sin(angle), 0.0};
        };
        const double outer = radius * random.number(0.4, 2.0);
        const Vec placed = at(start + measured * random.number(0.1, 0.9), outer);
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        const bool seen = i % 4 != 0;
        const Drawing drawing =
            create(frame, *curve, place, seen ? view.data() : nullptr,
                   (otherWay ? line2 : line1).get(), (otherWay ? line1 : line2).get());

        ExpectLocated(place, drawing, frame.point(placed), viewer);
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], at(start, outer), placed, kNear);
        ExpectStroke(drawing.leaders[1], at(start + sweep, outer), placed, kNear);
        for (const DrawnLeader& leader : drawing.leaders) {
            ExpectVec3Near(leader.centre, {}, kNear);
            ExpectArrow(leader, kNear);
        }
        EXPECT_NEAR(drawing.leaders[0].sweep() + drawing.leaders[1].sweep(), std::abs(measured),
                    kNear);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        ExpectStroke(drawing.extensions[0], at(start, radius), at(start, outer), kNear);
        ExpectStroke(drawing.extensions[1], at(start + sweep, radius), at(start + sweep, outer),
                     kNear);
        EXPECT_NEAR(drawing.text.number(), std::abs(measured) * radius, 0.0055);
        ExpectTangentText(drawing.text, placed);
        // Read along the tangent right under the text.
        const Vec tangent = unit(cross({0, 0, 1}, placed));
        const double side = dot(tangent, drawing.text.x) < 0.0 ? -1.0 : 1.0;
        EXPECT_GE(seen ? side * dot(frame.direction(tangent), viewer.axes[0]) : 0.0, -1e-5);
    }
}

TEST_P(ArcLengthTest, RunsBesideAStraightEdge) {
    Random random(4);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        // The plane that holds the edge and the horizontal across it, unless a section is given.
        Rigid frame = Rigid::random(random);
        frame.axes[1] = unit(cross(frame.axes[0], {0, 0, 1}));
        frame.axes[2] = cross(frame.axes[0], frame.axes[1]);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const Vec start{random.number(-50, 50), random.number(-50, 50), 0.0};
        const Vec end = start + Vec{random.number(5, 60), 0, 0};
        const Vec offset{0.0, random.number(2.0, 40.0) * (i % 2 == 0 ? 1.0 : -1.0), 0.0};
        const Vec placed = start + offset + Vec{random.number(-40, 90), 0, 0};
        const auto edge = line(frame.point(start), frame.point(end));
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        const Drawing drawing = create(frame, *edge, place, view.data(), nullptr, nullptr);

        ExpectLocated(place, drawing, frame.point(placed), viewer);
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], start + offset, placed, kNear);
        ExpectStroke(drawing.leaders[1], end + offset, placed, kNear);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        ExpectStroke(drawing.extensions[0], start, start + offset, kNear);
        ExpectStroke(drawing.extensions[1], end, end + offset, kNear);
        EXPECT_NEAR(drawing.text.number(), length(end - start), 0.0051);
        ExpectVec3Near(drawing.text.at, placed, kNear);
        // The text stands on the dimension line, its feet towards the edge.
        ExpectVec3Near(drawing.text.y, unit(offset), kNear);
        EXPECT_NEAR(std::abs(drawing.text.x.x), 1.0, 1e-5);
    }
}

TEST_P(ArcLengthTest, PlacedAtTheCentreStillShowsTheLength) {
    const auto curve = arc({}, 10.0, 0.0, kHalfTurn / 2.0);
    const auto line1 = line({0, 0, 0}, {1, 0, 0});
    const auto line2 = line({0, 0, 0}, {0, 1, 0});
    _ank_locate place = locate({0, 0, 0});
    const Drawing drawing = create({}, *curve, place, nullptr, line1.get(), line2.get());
    EXPECT_EQ(drawing.text.line, L"15.71");
    EXPECT_EQ(drawing.leaders.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Planes, ArcLengthTest, testing::Bool(),
                         [](const auto& clipped) { return clipped.param ? "Clipped" : "Own"; });

} // namespace
} // namespace dorvale::test
