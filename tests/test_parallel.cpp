// Lengths of straight edges: the parallel dimension, and the arc-length generators on an edge.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 3e-3;

/// An edge in a frame whose plane is the edge's and the horizontal's, and its placement.
struct Call {
    const Rigid& frame;
    Ank_Line* edge;
    _ank_locate* place;
    Ank_PMI* pmi;
    int* status;
    double* view;
};

struct EdgeLength {
    const char* name;
    void (*create)(const Call&);
    /// Its dimension line has its arrows meet in its middle and its text along the plane's axes.
    bool isParallel;
    bool parallelScreen;
};

void parallel(const Call& c) {
    int kind = 900001;
    const auto reference = line(c.frame.point({3, -40, 0}), c.frame.point({3, 60, 0}));
    PMICreateParallelDim3D(&kind, nullptr, reference.get(), c.edge, nullptr, c.place, 3.5, c.pmi,
                           c.status, c.view);
}
void ownPlane(const Call& c) {
    PMICreateArcDim3D(nullptr, c.edge, c.place, 3.5, c.pmi, c.status, c.view, nullptr, nullptr);
}
void section(const Call& c) {
    Vec normal = c.frame.axes[2] * 2.5;
    Vec origin = c.frame.point({-7, 3, 0});
    Vec xPoint = c.frame.point({5, 8, 0});
    PMICreateClipArcDim3D(nullptr, &normal.x, &origin.x, &xPoint.x, c.edge, c.place, 3.5, c.pmi,
                          c.status, c.view, nullptr, nullptr);
}

class EdgeLengthTest : public testing::TestWithParam<EdgeLength> {};

TEST_P(EdgeLengthTest, RunsBesideTheEdgeThroughThePlacement) {
    const bool isParallel = GetParam().isParallel;
    Random random(2);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = slopingFrame(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        ViewMatrix view = viewer.view();
        const Vec start{random.number(-50, 50), random.number(-50, 50), 0.0};
        const Vec end = start + Vec{0.0, random.number(25, 60), 0.0};
        // On either side of the edge; the parallel dimension now and then on the edge itself.
        const Vec offset{isParallel && i % 9 == 0 ? 0.0 : random.number(-40, 40), 0.0, 0.0};
        const Vec placed = start + offset + Vec{0.0, random.number(-40, 90), 0.0};
        const auto edge = line(frame.point(start), frame.point(end));
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        int status = 7;
        Ank_PMI pmi;
        pmi.SetType(ANK_PMI_LINEAR);
        GetParam().create(
            {frame, edge.get(), &place, &pmi, &status, i % 3 == 0 ? nullptr : view.data()});
        const Drawing drawing(pmi, frame);

        ExpectLocated(place, drawing, placed, viewer);
        const Vec meeting = isParallel ? (start + end) * 0.5 + offset : placed;
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        for (std::size_t k = 0; k < 2; ++k) {
            const Vec from = k == 0 ? start : end;
            ExpectStroke(drawing.leaders[k], from + offset, meeting, kNear);
            ExpectArrow(drawing.leaders[k], kNear);
            ExpectStroke(drawing.extensions[k], from, from + offset, kNear);
        }
        EXPECT_NEAR(drawing.text.number(), length(end - start), 0.0053);
        ExpectVec3Near(drawing.text.at, placed, kNear);
        if (isParallel) {
            // The plane's axes are taken as the model has them, whatever the view.
            const Rigid& plane = drawing.plane;
            ExpectVec3Near(frame.direction(drawing.text.x), plane.direction(plane.axes[0]), 1e-5);
            ExpectVec3Near(frame.direction(drawing.text.y), plane.direction(plane.axes[1]), 1e-5);
        } else {
            // The feet stand towards the edge.
            EXPECT_GT(dot(drawing.text.y, offset), 0.0);
            EXPECT_NEAR(std::abs(drawing.text.x.y), 1.0, 1e-5);
        }
        ExpectFlags(pmi, isParallel ? ANK_PMI_PARALLEL : ANK_PMI_LINEAR, GetParam().parallelScreen);
        EXPECT_EQ(status, isParallel ? 7 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Generators, EdgeLengthTest,
                         testing::Values(EdgeLength{"Parallel", parallel, true, false},
                                         EdgeLength{"OwnPlane", ownPlane, false, true},
                                         EdgeLength{"Section", section, false, false}),
                         [](const auto& generator) { return generator.param.name; });

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
    EXPECT_EQ(Vec(place.point), Vec(5, 6, 7));
}

} // namespace
} // namespace dorvale::test
