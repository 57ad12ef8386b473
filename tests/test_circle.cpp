// Radius and diameter.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 1e-3;

struct CircleKind {
    const char* name;
    decltype(&PMICreateRadiusDim3D) create;
    AnkPMITypeEnum type;
    const wchar_t* sign;
    double radii;
};

class CircleTest : public testing::TestWithParam<CircleKind> {
protected:
    /// The dimension of a circle about a frame's origin; the status stays as it was.
    static Drawing create(const Rigid& frame, double radius, _ank_locate& place, double* view,
                          double height = 3.5) {
        const auto curve = circle(frame, radius);
        int kind = 900001;
        int status = 7;
        Ank_PMI pmi;
        GetParam().create(&kind, curve.get(), &place, nullptr, height, &pmi, &status, view);
        EXPECT_EQ(status, 7);
        ExpectFlags(pmi, GetParam().type, true);
        return Drawing(pmi, frame);
    }
    /// Of a circle of radius 10 about the model's origin, without a view.
    static Drawing createAt(const Vec& placed, double height = 3.5) {
        _ank_locate place = locate(placed);
        return create({}, 10.0, place, nullptr, height);
    }
    static bool isRadius() { return GetParam().type == ANK_PMI_RADIUS; }
};

TEST_P(CircleTest, LeadsFromTheCircleToThePlacement) {
    Random random(1);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const Rigid viewer = randomViewer(random, frame.axes[2]);
        const double radius = random.number(1.0, 50.0);
        const double angle = random.number(0.0, 2.0 * kHalfTurn);
        const Vec outwards{std::cos(angle), std::sin(angle), 0.0};
        const Vec placed = outwards * (radius * random.number(0.05, 2.0));
        const bool inside = length(placed) < radius;
        _ank_locate place = placedAt(random, frame.point(placed), viewer);
        ViewMatrix view = viewer.view();
        const bool seen = i % 4 != 0;
        const Drawing drawing = create(frame, radius, place, seen ? view.data() : nullptr);

        ExpectLocated(place, drawing, placed, viewer);
        ASSERT_EQ(drawing.leaders.size(), isRadius() && !inside ? 1U : 2U);
        ExpectStroke(drawing.leaders[0], outwards * radius, placed, kNear);
        ExpectArrow(drawing.leaders[0], kNear);
        EXPECT_EQ(drawing.leaders[0].stub, isRadius() && !inside);
        if (!isRadius()) {
            ExpectStroke(drawing.leaders[1], outwards * -radius, placed, kNear);
            ExpectArrow(drawing.leaders[1], kNear);
            EXPECT_EQ(drawing.leaders[1].stub, !inside);
        } else if (inside) {
            ExpectStroke(drawing.leaders[1], {}, placed, kNear);
            EXPECT_EQ(drawing.leaders[1].head, ANK_TERM_NONE);
        }
        const DrawnText& text = drawing.text;
        EXPECT_EQ(text.line.find(GetParam().sign), 0U);
        EXPECT_NEAR(text.number(), GetParam().radii * radius, 0.0051);
        ExpectVec3Near(text.at, placed, kNear);
        // Inside along the leader with the arrow, outside along the plane's X axis and mirrored.
        const Vec leader = frame.direction(isRadius() ? outwards * -1.0 : outwards);
        const Vec along = inside ? leader : drawing.plane.axes[0];
        const Vec textX = frame.direction(text.x);
        EXPECT_NEAR(std::abs(dot(textX, along)), 1.0, kNear);
        EXPECT_GE(dot(textX, seen ? viewer.axes[0] : along), -1e-6);
        EXPECT_NEAR(dot(cross(textX, frame.direction(text.y)), drawing.plane.axes[2]),
                    inside ? 1.0 : -1.0, kNear);
    }
}

TEST_P(CircleTest, PlacedOnTheCircleHasNoLeaderOfNoLength) {
    const Drawing drawing = createAt({10, 0, 0});
    EXPECT_EQ(drawing.text.line, GetParam().sign + std::wstring(isRadius() ? L"10.00" : L"20.00"));
    ExpectVec3Near(drawing.text.y, {0, -1, 0}, 0.0);
    ASSERT_EQ(drawing.leaders.size(), isRadius() ? 0U : 1U);
    if (!isRadius()) {
        ExpectStroke(drawing.leaders[0], {-10, 0, 0}, {10, 0, 0}, 1e-5);
        EXPECT_TRUE(drawing.leaders[0].stub);
    }
}

TEST_P(CircleTest, PlacedAtTheCentreRunsAlongX) {
    const Drawing drawing = createAt({0, 0, 0});
    ASSERT_FALSE(drawing.leaders.empty());
    ExpectStroke(drawing.leaders[0], {10, 0, 0}, {0, 0, 0}, 1e-5);
}

TEST_P(CircleTest, CountsAHeightThatIsNotPositiveAsDefault) {
    EXPECT_EQ(createAt({3, 4, 0}, 5.0).text.height, 5.0F);
    EXPECT_EQ(createAt({3, 4, 0}, -2.0).text.height, 3.5F);
}

TEST_P(CircleTest, TouchesNothingForAnotherKindCode) {
    int kind = 900000;
    int status = 7;
    const auto curve = circle({}, 10.0);
    _ank_locate place = locate({3, 4, 5});
    Ank_PMI pmi;
    GetParam().create(&kind, curve.get(), &place, nullptr, 3.5, &pmi, &status, nullptr);
    EXPECT_EQ(read(pmi), read(Ank_PMI{}));
    EXPECT_EQ(status, 7);
    EXPECT_EQ(Vec(place.point), Vec(3, 4, 5));
}

INSTANTIATE_TEST_SUITE_P(Kinds, CircleTest,
                         testing::Values(CircleKind{"Radius", PMICreateRadiusDim3D, ANK_PMI_RADIUS,
                                                    L"R", 1.0},
                                         CircleKind{"Diameter", PMICreateDiameterDim3D,
                                                    ANK_PMI_DIAMETER, L"\u2300", 2.0}),
                         [](const auto& kind) { return kind.param.name; });

} // namespace
} // namespace dorvale::test
