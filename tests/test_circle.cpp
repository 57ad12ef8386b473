// Radius and diameter.
#include "drawing.h"

namespace dorvale::test {
namespace {

constexpr double kNear = 1e-3;

struct CircleKind {
    const char* call;
    AnkPMITypeEnum type;
    const wchar_t* sign;
    double radii;

    friend std::ostream& operator<<(std::ostream& out, const CircleKind& kind) {
        return out << kind.call;
    }
};

class CircleTest : public testing::TestWithParam<CircleKind> {
protected:
    /// Of a circle of radius 10 about the model's origin, without a view.
    static Drawing createAt(const Vec& placed, double height = 3.5) {
        Record record;
        set(record.center, {});
        record.radii[0] = 10.0;
        set(record.place, placed);
        record.noView = 1;
        record.height = height;
        return Drawing(Made(GetParam().call, record).pmi);
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
        const Vec outwards = towards(random.number(0.0, 2.0 * kHalfTurn));
        const Vec placed = outwards * (radius * random.number(0.05, 2.0));
        const bool inside = length(placed) < radius;
        Record record;
        set(record.center, {});
        record.radii[0] = radius;
        set(record.place, placed);
        record.noView = i % 4 == 0 ? 1 : 0;
        const Made made(GetParam().call, standing(record, frame, viewer, random.number(-50, 50)));
        const Drawing drawing(made.pmi, frame);

        ExpectFlags(made, GetParam().type, true, kStatusBefore);
        ExpectLocated(made, drawing, placed);
        ASSERT_EQ(drawing.leaders.size(), isRadius() && !inside ? 1U : 2U);
        ExpectArrow(drawing.leaders[0], outwards * radius, placed, kNear);
        EXPECT_EQ(hasStub(drawing.leaders[0]), isRadius() && !inside);
        if (!isRadius()) {
            ExpectArrow(drawing.leaders[1], outwards * -radius, placed, kNear);
            EXPECT_EQ(hasStub(drawing.leaders[1]), !inside);
        } else if (inside) {
            ExpectStroke(drawing.leaders[1], {}, placed, kNear);
            EXPECT_EQ(headOf(drawing.leaders[1]), ANK_TERM_NONE);
        }
        const Element& text = drawing.text;
        EXPECT_EQ(text.line().find(GetParam().sign), 0U);
        EXPECT_NEAR(text.number(), GetParam().radii * radius, 0.0051);
        ExpectVec3Near(text.vec("at"), placed, kNear);
        // Inside along the leader with the arrow, outside along the plane's X axis and mirrored.
        const Vec leader = frame.direction(isRadius() ? outwards * -1.0 : outwards);
        const Vec along = inside ? leader : drawing.plane.axes[0];
        const Vec textX = frame.direction(text.vec("x"));
        EXPECT_NEAR(std::abs(dot(textX, along)), 1.0, kNear);
        EXPECT_GE(dot(textX, made.noView != 0 ? along : viewer.axes[0]), -1e-6);
        EXPECT_NEAR(dot(cross(textX, frame.direction(text.vec("y"))), drawing.plane.axes[2]),
                    inside ? 1.0 : -1.0, kNear);
    }
}

TEST_P(CircleTest, PlacedOnTheCircleHasNoLeaderOfNoLength) {
    const Drawing drawing = createAt({10, 0, 0});
    EXPECT_EQ(drawing.text.line(),
              GetParam().sign + std::wstring(isRadius() ? L"10.00" : L"20.00"));
    ExpectVec3Near(drawing.text.vec("y"), {0, -1, 0}, 0.0);
    ASSERT_EQ(drawing.leaders.size(), isRadius() ? 0U : 1U);
    if (!isRadius()) {
        ExpectStroke(drawing.leaders[0], {-10, 0, 0}, {10, 0, 0}, 1e-5);
        EXPECT_TRUE(hasStub(drawing.leaders[0]));
    }
}

TEST_P(CircleTest, PlacedAtTheCentreRunsAlongX) {
    const Drawing drawing = createAt({0, 0, 0});
    ASSERT_FALSE(drawing.leaders.empty());
    ExpectStroke(drawing.leaders[0], {10, 0, 0}, {0, 0, 0}, 1e-5);
}

TEST_P(CircleTest, CountsAHeightThatIsNotPositiveAsDefault) {
    EXPECT_EQ(createAt({3, 4, 0}, 5.0).text.numbers("size")[1], 5.0);
    EXPECT_EQ(createAt({3, 4, 0}, -2.0).text.numbers("size")[1], 3.5);
}

INSTANTIATE_TEST_SUITE_P(
    Circle, CircleTest,
    testing::Values(CircleKind{"PMICreateRadiusDim3D", ANK_PMI_RADIUS, L"R", 1.0},
                    CircleKind{"PMICreateDiameterDim3D", ANK_PMI_DIAMETER, L"\u2300", 2.0}),
    [](const auto& kind) { return std::string(kind.param.call); });

TEST(CircleKindCode, LeavesEverythingAsItWasUnlessItIsTheOne) {
    for (const char* call :
         {"PMICreateRadiusDim3D", "PMICreateDiameterDim3D", "PMICreateParallelDim3D"}) {
        Record record;
        record.kindCode = 900000;
        Arguments made(record);
        const Bits before = made.bits();
        run(call, made);
        EXPECT_EQ(made.bits(), before) << call;
    }
    PMICreateRadiusDim3D(nullptr, nullptr, nullptr, nullptr, 3.5, nullptr, nullptr, nullptr);
}

} // namespace
} // namespace dorvale::test
