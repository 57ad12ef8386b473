// The length of a straight edge, beside the edge.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 3e-3;

TEST(ParallelTest, RunsBesideTheEdgeThroughThePlacement) {
    Random random(2);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        // The reference line climbs the slope; the edge lies in the plane in any direction.
        const Rigid frame = slopingFrame(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const Vec start{random.number(-50, 50), random.number(-50, 50), 0.0};
        const Vec end = start + Vec{random.number(5, 50), random.number(-50, 50), 0.0};
        const Vec along = unit(end - start);
        const Vec across{-along.y, along.x, 0.0};
        const double offset = random.number(2.0, 40.0) * (i % 2 == 0 ? 1.0 : -1.0);
        const Vec placed = start + along * random.number(-50.0, 50.0) + across * offset;
        const auto edge = line(frame.point(start), frame.point(end));
        const auto reference = line(frame.point({3, -40, 0}), frame.point({3, 60, 0}));
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        ViewMatrix view = viewer.view();

        int kind = 900001;
        int status = 7;
        Ank_PMI pmi;
        pmi.SetParallelScreen(i % 2 == 0);
        PMICreateParallelDim3D(&kind, nullptr, reference.get(), edge.get(), nullptr, &place, 3.5,
                               &pmi, &status, i % 3 == 0 ? nullptr : view.data());
        const Drawing drawing(pmi, frame);

        const Vec middle = (start + end) * 0.5 + across * offset;
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectStroke(drawing.leaders[0], start + across * offset, middle, kNear);
        ExpectStroke(drawing.leaders[1], end + across * offset, middle, kNear);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        ExpectStroke(drawing.extensions[0], start, start + across * offset, kNear);
        ExpectStroke(drawing.extensions[1], end, end + across * offset, kNear);
        for (const DrawnLeader& leader : drawing.leaders) {
            ExpectArrow(leader, kNear);
        }
        ExpectLocated(place, drawing, frame.point(placed), viewer);
        ExpectVec3Near(drawing.text.at, placed, kNear);
        EXPECT_NEAR(drawing.text.number(), length(end - start), 0.0051);
        // The axes of the plane as the model has them, whatever the view.
        ANK_DIR32 x;
        ANK_DIR32 y;
        pmi.GetComText()[0]->GetTexts()[0]->GetInnerXYAxis(x, y);
        ExpectVec3Near(x, drawing.plane.axes[0], 1e-6);
        ExpectVec3Near(y, drawing.plane.axes[1], 1e-6);
        ExpectFlags(pmi, ANK_PMI_PARALLEL, i % 2 == 0);
        EXPECT_EQ(status, 7);
    }
}

TEST(ParallelTest, PlacedOnTheEdgeLiesOnIt) {
    const auto edge = line({0, 0, 0}, {20, 0, 0});
    _ank_locate place = locate({5, 0, 9});
    int kind = 900001;
    Ank_PMI pmi;
    PMICreateParallelDim3D(&kind, nullptr, edge.get(), edge.get(), nullptr, &place, 3.5, &pmi,
                           nullptr, nullptr);
    const Drawing drawing(pmi, {});
    EXPECT_EQ(drawing.text.line, L"20.00");
    ASSERT_EQ(drawing.leaders.size(), 2U);
    ExpectStroke(drawing.leaders[1], {20, 0, 0}, {10, 0, 0}, 1e-6);
    ASSERT_EQ(drawing.extensions.size(), 2U);
    ExpectStroke(drawing.extensions[1], {20, 0, 0}, {20, 0, 0}, 1e-6);
}

TEST(ParallelTest, TouchesNothingForAnotherKindCode) {
    const auto edge = line({0, 0, 0}, {20, 0, 0});
    _ank_locate place = locate({5, 6, 7});
    int kind = 0;
    int status = 7;
    Ank_PMI pmi;
    PMICreateParallelDim3D(&kind, nullptr, edge.get(), edge.get(), nullptr, &place, 3.5, &pmi,
                           &status, nullptr);
    EXPECT_EQ(read(pmi), read(Ank_PMI{}));
    EXPECT_EQ(status, 7);
    ExpectVec3Near(Vec(place.point), {5, 6, 7}, 0.0);
}

} // namespace
} // namespace dorvale::test
