// The length of an arc, in its own plane or in a section.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 2e-3;

class ArcLengthTest : public testing::TestWithParam<bool> {
protected:
    /// The dimension of an arc in a frame's XY plane.
    static Drawing create(const Rigid& frame, Ank_Ellipse& curve, _ank_locate& place, double* view,
                          Ank_Line& line1, Ank_Line& line2) {
        int status = 7;
        Ank_PMI pmi;
        pmi.SetType(ANK_PMI_LINEAR);
        if (GetParam()) {
            Vec normal = frame.axes[2] * 2.5;
            Vec origin = frame.point({-7, 3, 0});
            Vec xPoint = frame.point({5, 8, 0});
            PMICreateClipArcDim3D(nullptr, &normal.x, &origin.x, &xPoint.x, &curve, &place, 3.5,
                                  &pmi, &status, view, &line1, &line2);
            ExpectFlags(pmi, ANK_PMI_CLIP_ARC, false);
        } else {
            PMICreateArcDim3D(nullptr, &curve, &place, 3.5, &pmi, &status, view, &line1, &line2);
            ExpectFlags(pmi, ANK_PMI_LINEAR, true);
        }
        EXPECT_EQ(status, 0);
        return Drawing(pmi, frame);
    }
};

TEST_P(ArcLengthTest, RunsConcentricallyThroughThePlacement) {
    Random random(3);
    for (int i = 0; i < 400; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const double radius = random.number(5.0, 40.0);
        const double outer = radius * random.number(0.4, 2.0);
        const double start = random.number(0.0, 2.0 * kHalfTurn);
        const double sweep = i % 10 == 0 ? kHalfTurn : random.number(0.2, 2.0 * kHalfTurn - 0.2);
        const auto curve = arc(frame, radius, start, start + sweep);
        // The two lines in the other order measure the other way round.
        auto line1 = line(frame.point({1, 1, 0}), frame.point({9, 2, 0}));
        auto line2 = line(frame.point({1, 2, 0}), frame.point({9, 9, 0}));
        double measured = sweep;
        if (i % 3 == 0) {
            std::swap(line1, line2);
            measured -= 2.0 * kHalfTurn;
        }
        const auto at = [](double angle, double r) {
            return Vec{r * std::cos(angle), r * std::sin(angle), 0.0};
        };
        const Vec placed = at(start + measured * random.number(0.1, 0.9), outer);
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        const bool seen = i % 4 != 0;
        const Drawing drawing =
            create(frame, *curve, place, seen ? view.data() : nullptr, *line1, *line2);

        ExpectLocated(place, drawing, placed, viewer);
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        for (std::size_t k = 0; k < 2; ++k) {
            const double end = k == 0 ? start : start + sweep;
            ExpectStroke(drawing.leaders[k], at(end, outer), placed, kNear);
            ExpectVec3Near(drawing.leaders[k].centre, {}, kNear);
            ExpectArrow(drawing.leaders[k], kNear);
            ExpectStroke(drawing.extensions[k], at(end, radius), at(end, outer), kNear);
        }
        EXPECT_NEAR(drawing.leaders[0].sweep() + drawing.leaders[1].sweep(), std::abs(measured),
                    kNear);
        const DrawnText& text = drawing.text;
        EXPECT_NEAR(text.number(), std::abs(measured) * radius, 0.0055);
        ExpectVec3Near(text.at, placed, kNear);
        // The text touches a circle about the centre within its own width, a mirrored pair ...
        const Vec textX = frame.direction(text.x);
        EXPECT_NEAR(dot(cross(textX, frame.direction(text.y)), drawing.plane.axes[2]), -1.0, 1e-5);
        EXPECT_LT(dot(placed, text.x), 0.0);
        EXPECT_GT(dot(placed, text.x), -3.5 * static_cast<double>(text.line.size()));
        // ... and is read along the tangent at its start.
        const Vec tangent = frame.direction(unit(cross({0, 0, 1}, placed)));
        EXPECT_GE(seen ? dot(tangent, viewer.axes[0]) * dot(tangent, textX) : 0.0, -1e-5);
    }
}

TEST_P(ArcLengthTest, PlacedAtTheCentreStillShowsTheLength) {
    const auto curve = arc({}, 10.0, 0.0, kHalfTurn / 2.0);
    const auto line1 = line({0, 0, 0}, {1, 0, 0});
    const auto line2 = line({0, 0, 0}, {0, 1, 0});
    _ank_locate place = locate({0, 0, 0});
    const Drawing drawing = create({}, *curve, place, nullptr, *line1, *line2);
    EXPECT_EQ(drawing.text.line, L"15.71");
    EXPECT_EQ(drawing.leaders.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Planes, ArcLengthTest, testing::Bool(),
                         [](const auto& clipped) { return clipped.param ? "Section" : "Own"; });

} // namespace
} // namespace dorvale::test
