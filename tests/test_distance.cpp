// Distances between measured features, and their update.
#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 2e-5;

struct Distance {
    const char* call;
    /// The points that the value lies between, and at which the leaders start.
    std::size_t measured[2];
    std::size_t anchors[2];
    /// Each extension line starts in the middle of two points, or at one named twice.
    std::size_t bases[2][2];
};

class DistanceTest : public testing::TestWithParam<Distance> {};

TEST_P(DistanceTest, ShowsWhatItsOwnLinesMeasure) {
    const Distance& kind = GetParam();
    Random random(13);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        Record record;
        for (double* p : record.points) {
            set(p, random.point());
        }
        set(record.text, random.point());
        record.height = 2.5;
        const Made made(kind.call, record);
        const Drawing drawing(made.pmi);
        const Vec text(record.text);
        const auto at = [&record](std::size_t point) { return Vec(record.points[point]); };

        ExpectFlags(made, kTypeBefore, true);
        EXPECT_EQ(drawing.plane.axes, Rigid{}.axes);
        EXPECT_EQ(drawing.plane.origin, Vec());
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ASSERT_EQ(drawing.extensions.size(), 2U);
        for (std::size_t side = 0; side < 2; ++side) {
            const Vec anchor = at(kind.anchors[side]);
            const auto& [base1, base2] = kind.bases[side];
            ExpectArrow(drawing.leaders[side], anchor, text, kNear);
            ExpectStroke(drawing.extensions[side], (at(base1) + at(base2)) * 0.5, anchor, kNear);
        }
        EXPECT_NEAR(drawing.text.number(), length(at(kind.measured[1]) - at(kind.measured[0])),
                    0.00502);
        ExpectVec3Near(drawing.text.vec("at"), text, kNear);
        EXPECT_EQ(drawing.text.vec("x"), Vec(0, 1, 0));
        EXPECT_EQ(drawing.text.vec("y"), Vec(1, 0, 0));
        EXPECT_EQ(drawing.text.numbers("size")[1], 2.5);
    }
}

TEST_P(DistanceTest, OfCoincidentPointsIsZero) {
    Record record;
    for (double* p : record.points) {
        set(p, Vec(record.text));
    }
    const Drawing drawing(Made(GetParam().call, record).pmi);
    EXPECT_EQ(drawing.text.line(), L"0.00");
    EXPECT_TRUE(drawing.leaders.empty());
    EXPECT_EQ(drawing.extensions.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(
    Distance, DistanceTest,
    testing::Values(Distance{"PMICreateAxToAx", {2, 5}, {2, 5}, {{1, 1}, {4, 4}}},
                    Distance{"PMICreateCntToCnt", {0, 2}, {1, 3}, {{0, 0}, {2, 2}}},
                    Distance{"PMICreatePLNTOPLN", {2, 5}, {2, 5}, {{0, 1}, {3, 4}}},
                    Distance{"PMICreatePntToFace", {2, 5}, {2, 5}, {{1, 1}, {4, 4}}}),
    [](const auto& kind) { return std::string(kind.param.call); });

TEST(DistanceUpdate, ReplacesLeadersAndAddsAText) {
    Made made("PMICreateAxToAx", {});
    const std::pair<Vec, const wchar_t*> updates[] = {
        {{0, 3, 4}, L"5.00"}, {{0, 3, 10}, L"10.44"}, {{0, 0, 0}, L"0.00"}};
    Vec end;
    for (const auto& [to, value] : updates) {
        set(made.place, {});
        set(made.text, to);
        run("PMIUpdateDimesion", made);
        const Drawing drawing(made.pmi);
        EXPECT_EQ(made.status, 0);
        EXPECT_EQ(drawing.text.line(), value);
        EXPECT_EQ(drawing.text.vec("at"), to * 0.5);
        EXPECT_EQ(drawing.text.numbers("size")[1], 3.5);
        // Leaders stay as they were where there is nothing to lead to.
        end = to == Vec() ? end : to;
        ASSERT_EQ(drawing.leaders.size(), 2U);
        ExpectArrow(drawing.leaders[0], {}, end * 0.5, kNear);
        ExpectArrow(drawing.leaders[1], end, end * 0.5, kNear);
    }
    EXPECT_EQ(made.pmi.GetComText().size(), 4U);
    EXPECT_EQ(made.pmi.GetExLines().size(), 2U);
}

} // namespace
} // namespace dorvale::test
