// Definition planes, placement and projection, by what must be true of them in space.
#include <climits>

#include "support/calls.h"
#include "support/rigid.h"

namespace dorvale::test {
namespace {

constexpr int kCases = 300;
double kTolerances[] = {0.01, 0.00026};

struct Plane {
    int status;
    Vec origin;
    Vec x;
    Vec y;

    Vec normal() const { return cross(x, y); }
};

/// The plane of a record's two lines or its arc. Fails unless the axes are a plane's.
Plane definePlane(int kind, Record record, const Rigid* viewer = nullptr) {
    record.planeKind = kind;
    record.noView = viewer == nullptr ? 1 : 0;
    std::ranges::copy((viewer == nullptr ? Rigid{} : *viewer).view(), record.viewMatrix);
    Arguments made(record);
    run("PMI3DPlnDef", made);
    const Plane plane{made.code, Vec(made.result), Vec(made.result + 3), Vec(made.result + 6)};
    EXPECT_NEAR(length(plane.x), 1.0, 1e-12);
    EXPECT_NEAR(length(plane.y), 1.0, 1e-12);
    EXPECT_NEAR(dot(plane.x, plane.y), 0.0, 1e-12);
    return plane;
}

Record arcIn(const Rigid& frame, double radius, double from, double to) {
    Record record;
    record.curves[0] = 1;
    set(record.center, frame.origin);
    set(record.normal, frame.axes[2]);
    record.radii[0] = radius;
    set(record.arcEnds, frame.point(towards(from) * radius), frame.point(towards(to) * radius));
    return record;
}

class DefinitionPlane : public testing::Test {
protected:
    /// Fails unless the plane lies along some directions, has an origin, faces whoever looks, and
    /// has a Y axis square to the world's X. Returns the plane that nobody looks at.
    Plane expectPlane(int kind, const Record& record, std::initializer_list<Vec> along,
                      double tolerance, const Vec& origin, double toOrigin, int status = 0) {
        const Rigid viewer = Rigid::random(random);
        const Plane seen = definePlane(kind, record, &viewer);
        const Plane unseen = definePlane(kind, record);
        EXPECT_GE(dot(seen.normal(), viewer.axes[2]), 0.0);
        for (const Plane& plane : {seen, unseen}) {
            EXPECT_EQ(plane.status, status);
            ExpectVec3Near(plane.origin, origin, toOrigin);
            EXPECT_NEAR(plane.y.x, 0.0, 1e-12);
            for (const Vec& direction : along) {
                EXPECT_NEAR(dot(plane.normal(), unit(direction)), 0.0, tolerance);
            }
        }
        return unseen;
    }

    Random random{9};
};

TEST_F(DefinitionPlane, OfAnArcIsItsOwn) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        for (const int kind : {4, 5, 7}) {
            const Plane plane =
                expectPlane(kind, arcIn(frame, 10.0, 0.0, 2.0), {frame.axes[0], frame.axes[1]},
                            1e-6, frame.origin, 1e-5);
            EXPECT_GT(dot(plane.normal(), frame.axes[2]), 0.0);
        }
    }
}

TEST_F(DefinitionPlane, OfTwoLinesHoldsBothAndStartsAtTheirCrossing) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec crossing = random.point();
        const Vec d1 = random.direction();
        const Vec d2 = random.direction();
        const Vec start1 = crossing + d1 * random.number(-50.0, 50.0);
        const Vec start2 = crossing + d2 * random.number(-50.0, 50.0);
        const double slant = length(cross(d1, d2));
        for (const int kind : {6, 11}) {
            if (slant > 0.1) {
                expectPlane(kind, edges(start1, start1 + d1 * 30.0, start2, start2 + d2 * 30.0),
                            {d1, d2}, 1e-5 / slant, crossing, 1e-4 / slant);
            }
        }
    }
}

TEST_F(DefinitionPlane, OfParallelLinesHoldsBoth) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec start = random.point();
        const Vec along = random.direction();
        // Beside each other, or one behind the other.
        const Vec other = start + (i % 2 == 0 ? random.point() : along * 40.0);
        expectPlane(6, edges(start, start + along * 30.0, other + along * 20.0, other),
                    {along, other - start}, 1e-5, {}, 0.0, 900);
    }
    // Of the planes through collinear lines the one square to the world's X, or else Y.
    const Record alongX = edges({0, 0, 0}, {10, 0, 0}, {20, 0, 0}, {30, 0, 0});
    const Record alongZ = edges({0, 0, 0}, {0, 0, 10}, {0, 0, 20}, {0, 0, 30});
    ExpectVec3Near(definePlane(6, alongX).normal(), {0, 0, -1}, 1e-12);
    ExpectVec3Near(definePlane(6, alongZ).normal(), {0, -1, 0}, 1e-12);
}

TEST_F(DefinitionPlane, OfSkewLinesStartsWhereTheyCrossSeenFromAbove) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec crossing{random.number(-50, 50), random.number(-50, 50), 0.0};
        // The first and the second line upright in the picture, too.
        const Vec d1{i % 3 == 1 ? 0.0 : random.number(0.3, 1.0), 1.0, random.number(-1, 1)};
        const Vec d2{i % 3 == 2 ? 0.0 : random.number(-1.0, -0.3), 1.0, random.number(-1, 1)};
        const Vec up{0.0, 0.0, random.number(20, 40)};
        expectPlane(6,
                    edges(crossing + up, crossing + up + d1 * 20.0, crossing - up - d2 * 5.0,
                          crossing - up),
                    {d1, d2}, 1e-5, crossing, 1e-3);
    }
    // Both upright: beside the point of the first that is nearest to the second.
    const Record upright = edges({0, 0, 0}, {0, 10, 0}, {3, 4, 0}, {3, 4, 10});
    ExpectVec3Near(definePlane(6, upright).origin, {0, 4, 0}, 1e-9);
}

TEST_F(DefinitionPlane, OfALineHoldsTheHorizontalAcrossIt) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec start = random.point();
        const Vec along = random.direction();
        const Vec horizontal = cross(along, {0, 0, 1});
        const Vec end = start + along * 30.0;
        expectPlane(7, edges(start, end, {}, {}), {along, horizontal}, 1e-5, start, 1e-5);
        expectPlane(2, edges({1, 2, 3}, {7, 8, 9}, start, end), {along, horizontal}, 1e-5,
                    {1, 2, 3}, 0.0);
    }
    for (const int kind : {2, 7}) {
        const Plane upright = definePlane(kind, edges({1, 2, 3}, {1, 2, 9}, {1, 2, 3}, {1, 2, 9}));
        EXPECT_NEAR(upright.normal().z, 0.0, 1e-12);
        EXPECT_NEAR(upright.y.y, 0.0, 1e-12);
    }
}

TEST_F(DefinitionPlane, TurnsANormalAlongTheWorldsXToTheViewer) {
    const Rigid viewer{{Vec{0, 1, 0}, Vec{0, 0, 1}, Vec{1, 0, 0}}, {}};
    const Rigid away{{Vec{0, 0, 1}, Vec{0, 1, 0}, Vec{-1, 0, 0}}, {}};
    const Plane plane = definePlane(5, arcIn(away, 5.0, 0.0, 1.0), &viewer);
    ExpectVec3Near(plane.y, {0, 1, 0}, 1e-12);
    ExpectVec3Near(plane.x, {0, 0, -1}, 1e-12);
}

TEST_F(DefinitionPlane, OfAnyOtherKindIsTheWorlds) {
    for (const int kind : {-1, 0, 1, 3, 8, 9, 10, 12}) {
        const Plane plane = definePlane(kind, {});
        EXPECT_EQ(plane.status, 0);
        EXPECT_EQ(plane.origin, Vec());
        EXPECT_EQ(plane.x, Vec(1, 0, 0));
        EXPECT_EQ(plane.y, Vec(0, 1, 0));
    }
}

TEST_F(DefinitionPlane, ReadsNothingForAnUnknownKind) {
    // Neither objects nor numbers.
    char nothing = 0;
    void* const address = &nothing;
    for (const int kind : {INT_MIN, 1, 12}) {
        double axes[3][3] = {};
        EXPECT_EQ(PMI3DPlnDef(kind, static_cast<Ank_CurveEntity*>(address),
                              static_cast<Ank_CurveEntity*>(address), nullptr,
                              static_cast<double*>(address), axes[0], axes[1], axes[2],
                              static_cast<double*>(address)),
                  0);
        EXPECT_EQ(Vec(axes[0]), Vec());
        EXPECT_EQ(Vec(axes[1]), Vec(1, 0, 0));
        EXPECT_EQ(Vec(axes[2]), Vec(0, 1, 0));
    }
}

TEST_F(DefinitionPlane, TakesTheUsualTolerancesWithoutAny) {
    for (int kind = 0; kind < 14; ++kind) {
        // The lines' angle lies between the usual tolerance and a wider one.
        const Record record = edges({0, 0, 0}, {10, 0, 0}, {0, 5, 1}, {10, 5.01, 1});
        double tolerances[2] = {0.01, 0.00026};
        double wide[2] = {0.01, 0.1};
        double planes[3][9] = {};
        int at = 0;
        for (double* const given : {tolerances, wide, static_cast<double*>(nullptr)}) {
            Arguments made(record);
            double* const plane = planes[at++];
            PMI3DPlnDef(kind, made.lines, made.lines + 1, nullptr, given, plane, plane + 3,
                        plane + 6, nullptr);
        }
        EXPECT_TRUE(std::ranges::equal(planes[2], planes[0])) << kind;
        EXPECT_EQ(std::ranges::equal(planes[2], planes[1]), kind != 6 && kind != 11) << kind;
    }
}

TEST(Placement, SlidesAlongTheViewIntoThePlane) {
    Random random(10);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid plane = Rigid::random(random);
        Rigid viewer = Rigid::random(random);
        if (i % 5 == 0) {
            // Edge-on.
            viewer.axes = {plane.axes[2], plane.axes[1] * -1.0, plane.axes[0]};
        }
        const Vec picked = random.point();
        Record record;
        set(record.origin, plane.origin);
        set(record.axes, plane.axes[0] * 3.0, plane.axes[1]);
        set(record.place, picked);
        std::ranges::copy(viewer.view(), record.placeView);
        Arguments made(record);
        run("CnvViewLocate", made);
        const Vec at(made.locate.point);
        const double slant = std::abs(dot(viewer.axes[2], plane.axes[2]));
        if (i % 5 == 0) {
            EXPECT_EQ(at, picked);
        } else if (slant > 0.01) {
            EXPECT_NEAR(dot(at - plane.origin, plane.axes[2]), 0.0, 1e-9 / slant);
            EXPECT_NEAR(length(cross(at - picked, viewer.axes[2])), 0.0, 1e-9 / slant);
        }
        EXPECT_TRUE(std::ranges::equal(made.locate.viewMatrix, viewer.view()));
    }
}

TEST(Placement, WritesThePointAloneAndLeavesItWhereNobodyLooks) {
    Arguments made({});
    std::ranges::fill(made.locate.viewMatrix, 0.0);
    // Room for the point alone.
    const std::unique_ptr<double[]> point(new double[3]);
    EXPECT_EQ(CnvViewLocate(&made.locate, made.origin, made.xPoint, made.text, kTolerances,
                            static_cast<_ank_locate*>(static_cast<void*>(point.get()))),
              0);
    EXPECT_EQ(Vec(point.get()), Vec(made.place));
}

TEST(Projection, ArcGoesIntoItsPlaneAndBack) {
    Random random(11);
    constexpr double degree = kHalfTurn / 180.0;
    // Closed, and about a half circle, whose own rounding may make it more or less than one.
    const double sweeps[] = {0.0,
                             0.1,
                             0.5 * kHalfTurn,
                             kHalfTurn - 3.0 * degree,
                             kHalfTurn - 1e-3,
                             kHalfTurn,
                             kHalfTurn + degree,
                             kHalfTurn + 3.0 * degree,
                             1.5 * kHalfTurn,
                             6.0};
    for (int i = 0; i < 10 * kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const double radius = random.number(1.0, 100.0);
        const double from = random.number(-kHalfTurn, kHalfTurn);
        const double sweep = sweeps[i % 10];
        SCOPED_TRACE(testing::Message() << "sweep " << sweep);
        Arguments made(arcIn(frame, radius, from, from + sweep));
        made.arc.SetUsageType(ANK_CURVE_USAGE_SPECIAL_LINE);
        run("Project3DTo2D", made);
        ASSERT_NE(made.curveOut, nullptr);
        const auto& flat = static_cast<const Ank_Ellipse&>(*made.curveOut);
        EXPECT_EQ(flat.GetUsageType(), ANK_CURVE_USAGE_SPECIAL_LINE);
        ExpectVec3Near(flat.GetCenterPoint(), {0, 0, 0}, 1e-9);
        std::vector<ANK_PNT32> ends(2);
        float parameter[2];
        flat.GetCoordinatePnt(ends[0], ends[1]);
        flat.GetParameter(parameter[0], parameter[1]);
        ExpectVec3Near(ends[0], towards(parameter[0]) * radius, 1e-4);
        ExpectVec3Near(ends[1], towards(parameter[1]) * radius, 1e-4);
        // Counter-clockwise about the plane's normal, which is the arc's own.
        ExpectVec3Near(flat.GetNormal(), {0, 0, 1}, 1e-3);
        ExpectVec3Near(Vec(made.result + 8), frame.axes[2], 1e-6);

        std::vector<ANK_PNT32> back(1);
        EXPECT_EQ(CArithmeticOfPMI::Project2DTo3D(ends, made.result, back), 2);
        ASSERT_EQ(back.size(), 3U);
        ExpectVec3Near(back[1], Vec(made.arcEnds[0]), 1e-4);
        ExpectVec3Near(back[2], Vec(made.arcEnds[1]), 1e-4);
    }
}

TEST(Projection, WhatIsNoArcGivesNothing) {
    const std::pair<int, double> cases[] = {{2, 30.0}, {9, 30.0}, {1, 0.0}, {1, -1.0}};
    for (const auto& [curve, radius] : cases) {
        Record record;
        record.curves[0] = curve;
        record.radii[0] = radius;
        Arguments made(record);
        run("Project3DTo2D", made);
        EXPECT_EQ(made.curveOut, nullptr);
        EXPECT_EQ(std::ranges::count(made.result, 0.0), 16);
    }
    std::vector<ANK_PNT32> points;
    double matrix[16] = {};
    EXPECT_EQ(CArithmeticOfPMI::Project2DTo3D({}, matrix, points), 0);
    EXPECT_TRUE(points.empty());
}

TEST(Projection, NormalOfThreePoints) {
    ANK_DIR32 untouched{7, 8, 9};
    const auto normal = [&](const ANK_PNT32& p, const ANK_PNT32& q, const ANK_PNT32& r) {
        return Vec(CDimSymUitity::GetNoraml(p, q, r, untouched, untouched, untouched));
    };
    EXPECT_EQ(normal({0, 0, 0}, {1, 0, 0}, {0, 1, 0}), Vec(0, 0, 1));
    EXPECT_EQ(normal({0, 0, 0}, {0, 1, 0}, {1, 0, 0}), Vec(0, 0, -1));
    EXPECT_EQ(normal({1, 1, 1}, {2, 2, 2}, {5, 5, 5}), Vec());
    EXPECT_EQ(Vec(untouched), Vec(7, 8, 9));
    double points[3][3] = {{1, 2, 3}, {1, 9, 3}, {1, 4, 8}};
    double out[3];
    CDimSymUitity::GetNoraml(points[0], points[1], points[2], out);
    ExpectVec3Near(Vec(out), {1, 0, 0}, 1e-12);
    // Where there is none, what the caller had there stays.
    const Vec before(out);
    CDimSymUitity::GetNoraml(points[0], points[0], points[2], out);
    CDimSymUitity::GetNoraml(points[0], points[1], points[1], out);
    EXPECT_EQ(Vec(out), before);
}

TEST(Projection, PointTurnsAboutTheAxis) {
    Random random(12);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        Rigid frame = Rigid::random(random);
        const double from = random.number(-4.0, 4.0);
        const auto angle = static_cast<float>(random.number(-10.0, 10.0));
        const double height = random.number(-1.0, 1.0);
        const auto distance = static_cast<float>(random.number(-50.0, 50.0));
        const auto at = [&](double t) {
            return frame.direction(unit(towards(t) + Vec{0.0, 0.0, height}));
        };
        const ANK_PNT32 turned = CDimSymUitity::ComputeVecByAngle(
            (frame.axes[2] * 2.0).direction32(), at(from).direction32(), angle,
            frame.origin.point32(), {}, distance);
        ExpectVec3Near(turned, frame.origin + at(from + angle) * distance, 1e-4);

        // The turned direction is one of single precision, however far the point lies along it.
        const auto along = [&](float reach) {
            return Vec(CDimSymUitity::ComputeVecByAngle(
                frame.axes[2].direction32(), at(from).direction32(), angle, {}, {}, reach));
        };
        EXPECT_EQ(along(999.0F), Vec((along(1.0F) * 999.0).point32()));
    }
    // An axis without a length turns nothing.
    EXPECT_EQ(Vec(CDimSymUitity::ComputeVecByAngle({}, {0, 1, 0}, 1.0F, {1, 2, 3}, {}, 4.0F)),
              Vec(1, 6, 3));
}

} // namespace
} // namespace dorvale::test
