// The length of an arc, in its own plane or in a section.
#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 2e-3;

class ArcLengthTest : public testing::TestWithParam<const char*> {
protected:
    static bool isSection() { return GetParam() == std::string_view("PMICreateClipArcDim3D"); }
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
        // Two lines that measure counter-clockwise, or in the other order the other way round.
        const double measured = i % 3 == 0 ? sweep - 2.0 * kHalfTurn : sweep;
        const Vec placed = towards(start + measured * random.number(0.1, 0.9)) * outer;
        Record record;
        set(record.center, {});
        record.radii[0] = radius;
        set(record.arcEnds, towards(start) * radius, towards(start + sweep) * radius);
        set(record.lineEnds[i % 3 == 0 ? 1 : 0], {1, 1, 0}, {9, 2, 0});
        set(record.lineEnds[i % 3 == 0 ? 0 : 1], {1, 2, 0}, {9, 9, 0});
        set(record.place, placed);
        record.noView = i % 4 == 0 ? 1 : 0;
        const Made made(GetParam(), standing(record, frame, viewer, random.number(-50, 50)));
        const Drawing drawing(made.pmi, frame);

        ExpectFlags(made, isSection() ? ANK_PMI_CLIP_ARC : kTypeBefore, !isSection());
        ExpectLocated(made, drawing, placed);
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        for (std::size_t k = 0; k < 2; ++k) {
            const Vec end = towards(k == 0 ? start : start + sweep);
            ExpectArrow(drawing.leaders[k], end * outer, placed, kNear);
            ExpectVec3Near(drawing.leaders[k].vec("point", 2), {}, kNear);
            ExpectStroke(drawing.extensions[k], end * radius, end * outer, kNear);
        }
        EXPECT_NEAR(sweepOf(drawing.leaders[0]) + sweepOf(drawing.leaders[1]), std::abs(measured),
                    kNear);
        const Element& text = drawing.text;
        EXPECT_NEAR(text.number(), std::abs(measured) * radius, 0.0055);
        ExpectVec3Near(text.vec("at"), placed, kNear);
        // The text touches a circle about the centre within its own width, a mirrored pair ...
        const Vec textX = frame.direction(text.vec("x"));
        EXPECT_NEAR(dot(cross(textX, frame.direction(text.vec("y"))), drawing.plane.axes[2]), -1.0,
                    1e-5);
        EXPECT_LT(dot(placed, text.vec("x")), 0.0);
        EXPECT_GT(dot(placed, text.vec("x")), -3.5 * static_cast<double>(text.line().size()));
        // ... and is read along the tangent at its start.
        const Vec tangent = frame.direction(unit(cross({0, 0, 1}, placed)));
        EXPECT_GE(made.noView != 0 ? 0.0 : dot(tangent, viewer.axes[0]) * dot(tangent, textX),
                  -1e-5);
    }
}

TEST_P(ArcLengthTest, PlacedAtTheCentreStillShowsTheLength) {
    Record record;
    set(record.place, Vec(record.center));
    const Drawing drawing(Made(GetParam(), record).pmi);
    EXPECT_EQ(drawing.text.line(), L"47.12");
    EXPECT_EQ(drawing.leaders.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(ArcLength, ArcLengthTest,
                         testing::Values("PMICreateArcDim3D", "PMICreateClipArcDim3D"),
                         [](const auto& call) { return std::string(call.param); });

} // namespace
} // namespace dorvale::test
