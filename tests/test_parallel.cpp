// Lengths of straight edges: the parallel dimension, and the arc-length generators on an edge.
#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 3e-3;

class ParallelTest : public testing::TestWithParam<const char*> {};

TEST_P(ParallelTest, RunsBesideTheEdgeThroughThePlacement) {
    // Its arrows meet in the middle of its dimension line, and its text runs along the plane's
    // axes.
    const bool isParallel = GetParam() == std::string_view("PMICreateParallelDim3D");
    const bool isOwnPlane = GetParam() == std::string_view("PMICreateArcDim3D");
    Random random(2);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = slopingFrame(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const Vec start{random.number(-50, 50), random.number(-50, 50), 0.0};
        const Vec end = start + Vec{0.0, random.number(25, 60), 0.0};
        // On either side of the edge; the parallel dimension now and then on the edge itself.
        const Vec offset{isParallel && i % 9 == 0 ? 0.0 : random.number(-40, 40), 0.0, 0.0};
        const Vec placed = start + offset + Vec{0.0, random.number(-40, 90), 0.0};
        Record record;
        // The parallel dimension has a reference first.
        set(record.lineEnds[isParallel ? 1 : 0], start, end);
        set(record.lineEnds[isParallel ? 0 : 1], {3, -40, 0}, {3, 60, 0});
        record.curves[0] = 2;
        set(record.place, placed);
        record.noView = i % 3 == 0 ? 1 : 0;
        const Made made(GetParam(), standing(record, frame, viewer, random.number(-50, 50)));
        const Drawing drawing(made.pmi, frame);

        ExpectLocated(made, drawing, placed);
        const Vec meeting = isParallel ? (start + end) * 0.5 + offset : placed;
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        for (std::size_t k = 0; k < 2; ++k) {
            const Vec from = k == 0 ? start : end;
            ExpectArrow(drawing.leaders[k], from + offset, meeting, kNear);
            ExpectStroke(drawing.extensions[k], from, from + offset, kNear);
        }
        EXPECT_NEAR(drawing.text.number(), length(end - start), 0.0053);
        ExpectVec3Near(drawing.text.vec("at"), placed, kNear);
        if (isParallel) {
            // The plane's axes are taken as the model has them, whatever the view.
            const Rigid& plane = drawing.plane;
            ExpectVec3Near(frame.direction(drawing.text.vec("x")), plane.direction(plane.axes[0]),
                           1e-5);
            ExpectVec3Near(frame.direction(drawing.text.vec("y")), plane.direction(plane.axes[1]),
                           1e-5);
        } else {
            // The feet stand towards the edge.
            EXPECT_GT(dot(drawing.text.vec("y"), offset), 0.0);
            EXPECT_NEAR(std::abs(drawing.text.vec("x").y), 1.0, 1e-5);
        }
        ExpectFlags(made, isParallel ? ANK_PMI_PARALLEL : kTypeBefore, isOwnPlane,
                    isParallel ? kStatusBefore : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Parallel, ParallelTest,
                         testing::Values("PMICreateParallelDim3D", "PMICreateArcDim3D",
                                         "PMICreateClipArcDim3D"),
                         [](const auto& call) { return std::string(call.param); });

} // namespace
} // namespace dorvale::test
