// Definition planes, placement and projection, by what must be true of them in space.
#include <algorithm>

#include "support/annotation.h"
#include "support/members.h"
#include "support/scene.h"

using namespace dorvale::test;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kCases = 300;
double kTolerances[] = {0.01, 0.00026};

struct Plane {
    int status = -1;
    Vec origin;
    Vec x;
    Vec y;

    Vec normal() const { return cross(x, y); }
};

/// Fails unless the axes are a plane's, with Y square to the world's X where the normal is not
/// along it.
Plane definePlane(int kind, Ank_CurveEntity* first, Ank_CurveEntity* second, ViewMatrix* view) {
    double origin[3];
    double x[3];
    double y[3];
    const int status = PMI3DPlnDef(kind, first, second, nullptr, kTolerances, origin, x, y,
                                   view == nullptr ? nullptr : view->data());
    Plane plane{status, Vec(origin), Vec(x), Vec(y)};
    EXPECT_NEAR(length(plane.x), 1.0, 1e-12);
    EXPECT_NEAR(length(plane.y), 1.0, 1e-12);
    EXPECT_NEAR(dot(plane.x, plane.y), 0.0, 1e-12);
    return plane;
}

/// A random viewer, and every third time none.
class DefinitionPlane : public testing::Test {
protected:
    void look(int i) {
        viewer_ = Rigid::random(random);
        matrix_ = viewer_.view();
        seen_ = i % 3 != 0;
    }
    ViewMatrix* view() { return seen_ ? &matrix_ : nullptr; }
    void expectFacing(const Plane& plane) const {
        if (seen_) {
            EXPECT_GE(dot(plane.normal(), viewer_.axes[2]), 0.0);
        }
        EXPECT_NEAR(plane.y.x, 0.0, 1e-12);
    }

    Random random{9};

private:
    Rigid viewer_;
    ViewMatrix matrix_{};
    bool seen_ = false;
};

TEST_F(DefinitionPlane, OfAnArcIsItsOwn) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const auto curve = arc(frame, 10.0, 0.0, 2.0);
        look(i);
        for (const int kind : {4, 5, 7}) {
            const Plane plane = definePlane(kind, curve.get(), nullptr, view());
            EXPECT_EQ(plane.status, 0);
            ExpectVec3Near(plane.origin, frame.origin, 1e-5);
            expectFacing(plane);
            const double side = dot(plane.normal(), frame.axes[2]);
            EXPECT_NEAR(view() == nullptr ? side : std::abs(side), 1.0, 1e-6);
        }
    }
}

TEST_F(DefinitionPlane, OfTwoLinesHoldsBothAndStartsAtTheirCrossing) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec crossing = random.point();
        const Vec d1 = random.direction();
        const Vec d2 = random.direction();
        const auto edge = [&](const Vec& direction) {
            const double from = random.number(-50.0, 50.0);
            return line(crossing + direction * from, crossing + direction * (from + 30.0));
        };
        const auto first = edge(d1);
        const auto second = edge(d2);
        look(i);
        for (const int kind : {6, 11}) {
            const Plane plane = definePlane(kind, first.get(), second.get(), view());
            const double slant = length(cross(d1, d2));
            if (slant < 0.1) {
                continue;
            }
            EXPECT_EQ(plane.status, 0);
            ExpectVec3Near(plane.origin, crossing, 1e-4 / slant);
            EXPECT_NEAR(dot(plane.normal(), d1), 0.0, 1e-5 / slant);
            EXPECT_NEAR(dot(plane.normal(), d2), 0.0, 1e-5 / slant);
            expectFacing(plane);
        }
    }
}

TEST_F(DefinitionPlane, OfParallelLinesHoldsBoth) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec start = random.point();
        const Vec along = random.direction();
        // Beside each other, or one behind the other.
        const Vec apart = i % 2 == 0 ? random.point() : along * 40.0;
        const auto first = line(start, start + along * 30.0);
        const auto second = line(start + apart + along * 20.0, start + apart);
        look(i);
        const Plane plane = definePlane(6, first.get(), second.get(), view());
        EXPECT_EQ(plane.status, 900);
        EXPECT_EQ(plane.origin, Vec());
        EXPECT_NEAR(dot(plane.normal(), along), 0.0, 1e-5);
        EXPECT_NEAR(dot(plane.normal(), apart), 0.0, 1e-3);
        expectFacing(plane);
    }
    // Of the planes through collinear lines the one square to the world's X, or else Y.
    for (const auto& [along, normal] :
         {std::pair{Vec{1, 0, 0}, Vec{0, 0, -1}}, std::pair{Vec{0, 0, 1}, Vec{0, -1, 0}}}) {
        const auto first = line({0, 0, 0}, along * 10.0);
        const auto behind = line(along * 20.0, along * 30.0);
        ExpectVec3Near(definePlane(6, first.get(), behind.get(), nullptr).normal(), normal, 1e-12);
    }
}

TEST_F(DefinitionPlane, OfSkewLinesStartsWhereTheyCrossSeenFromAbove) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec crossing{random.number(-50, 50), random.number(-50, 50), 0.0};
        // The first and the second line upright in the picture, too.
        const Vec d1{i % 3 == 1 ? 0.0 : random.number(0.3, 1.0), 1.0, random.number(-1, 1)};
        const Vec d2{i % 3 == 2 ? 0.0 : random.number(-1.0, -0.3), 1.0, random.number(-1, 1)};
        const Vec up{0.0, 0.0, random.number(20, 40)};
        const auto first = line(crossing + up, crossing + up + d1 * 20.0);
        const auto second = line(crossing - up - d2 * 5.0, crossing - up);
        const Plane plane = definePlane(6, first.get(), second.get(), nullptr);
        EXPECT_EQ(plane.status, 0);
        ExpectVec3Near(plane.origin, crossing, 1e-3);
        EXPECT_NEAR(dot(plane.normal(), d1), 0.0, 1e-5);
        EXPECT_NEAR(dot(plane.normal(), d2), 0.0, 1e-5);
    }
    // Both upright: beside the point of the first that is nearest to the second.
    const auto first = line({0, 0, 0}, {0, 10, 0});
    const auto second = line({3, 4, 0}, {3, 4, 10});
    ExpectVec3Near(definePlane(6, first.get(), second.get(), nullptr).origin, {0, 4, 0}, 1e-9);
}

TEST_F(DefinitionPlane, OfALineHoldsTheHorizontalAcrossIt) {
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec start = random.point();
        const Vec along = random.direction();
        const auto measured = line(start, start + along * 30.0);
        const auto elsewhere = line({1, 2, 3}, {7, 8, 9});
        look(i);
        const Plane own = definePlane(7, measured.get(), nullptr, view());
        ExpectVec3Near(own.origin, start, 1e-5);
        const Plane other = definePlane(2, elsewhere.get(), measured.get(), view());
        EXPECT_EQ(other.origin, Vec(1, 2, 3));
        for (const Plane& plane : {own, other}) {
            EXPECT_EQ(plane.status, 0);
            EXPECT_NEAR(dot(plane.normal(), along), 0.0, 1e-5);
            EXPECT_NEAR(dot(plane.normal(), cross(along, {0, 0, 1})), 0.0, 1e-5);
            expectFacing(plane);
        }
    }
    const auto upright = line({1, 2, 3}, {1, 2, 9});
    for (const int kind : {2, 7}) {
        const Plane plane = definePlane(kind, upright.get(), upright.get(), nullptr);
        EXPECT_NEAR(plane.normal().z, 0.0, 1e-12);
        EXPECT_NEAR(plane.y.y, 0.0, 1e-12);
    }
}

TEST_F(DefinitionPlane, TurnsANormalAlongTheWorldsXToTheViewer) {
    const auto curve = circle({{Vec{0, 0, 1}, Vec{0, 1, 0}, Vec{-1, 0, 0}}, {}}, 5.0);
    ViewMatrix view = Rigid{{Vec{0, 1, 0}, Vec{0, 0, 1}, Vec{1, 0, 0}}, {}}.view();
    const Plane plane = definePlane(5, curve.get(), nullptr, &view);
    ExpectVec3Near(plane.y, {0, 1, 0}, 1e-12);
    ExpectVec3Near(plane.x, {0, 0, -1}, 1e-12);
}

TEST_F(DefinitionPlane, OfAnyOtherKindIsTheWorlds) {
    const auto curve = line({1, 2, 3}, {4, 5, 7});
    for (const int kind : {-1, 0, 1, 3, 8, 9, 10, 12}) {
        const Plane plane = definePlane(kind, curve.get(), curve.get(), nullptr);
        EXPECT_EQ(plane.status, 0);
        EXPECT_EQ(plane.origin, Vec());
        EXPECT_EQ(plane.x, Vec(1, 0, 0));
        EXPECT_EQ(plane.y, Vec(0, 1, 0));
    }
}

TEST(Placement, SlidesAlongTheViewIntoThePlane) {
    Random random(10);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        Rigid plane = Rigid::random(random);
        Rigid viewer = Rigid::random(random);
        const Vec picked = random.point();
        const bool edgeOn = i % 5 == 0;
        if (edgeOn) {
            viewer = plane;
            std::swap(viewer.axes[0], viewer.axes[2]);
            viewer.axes[1] = viewer.axes[1] * -1.0;
        }
        auto origin = plane.origin.array();
        auto x = (plane.axes[0] * 3.0).array();
        auto y = plane.axes[1].array();
        _ank_locate place = locate(picked, viewer.view());
        const _ank_locate before = place;
        // Room for the point alone.
        const std::unique_ptr<double[]> located(new double[3]);
        EXPECT_EQ(CnvViewLocate(&place, origin.data(), x.data(), y.data(), kTolerances,
                                static_cast<_ank_locate*>(static_cast<void*>(located.get()))),
                  0);
        const Vec at(located.get());
        const double slant = std::abs(dot(viewer.axes[2], plane.axes[2]));
        if (edgeOn) {
            EXPECT_EQ(at, picked);
        } else if (slant > 0.01) {
            EXPECT_NEAR(dot(at - plane.origin, plane.axes[2]), 0.0, 1e-9 / slant);
            EXPECT_NEAR(length(cross(at - picked, viewer.axes[2])), 0.0, 1e-9 / slant);
        }
        EXPECT_TRUE(std::equal(before.viewMatrix, before.viewMatrix + 16, place.viewMatrix));
        EXPECT_EQ(Vec(place.point), picked);
        CnvViewLocate(&place, origin.data(), x.data(), y.data(), kTolerances, &place);
        EXPECT_EQ(Vec(place.point), at);
    }
    _ank_locate unseen = locate({1, 2, 3}, ViewMatrix{});
    double origin[3] = {};
    double x[3] = {1, 0, 0};
    double y[3] = {0, 1, 0};
    EXPECT_EQ(CnvViewLocate(&unseen, origin, x, y, kTolerances, &unseen), 0);
    EXPECT_EQ(Vec(unseen.point), Vec(1, 2, 3));
}

TEST(Projection, ArcGoesIntoItsPlaneAndBack) {
    Random random(11);
    const double sweeps[] = {kPi / 2.0, kPi, 1.5 * kPi, 0.1, 6.0, kPi - 1e-3, kPi + 0.04};
    for (int i = 0; i < 7 * kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const double radius = random.number(1.0, 100.0);
        const double from = random.number(-kPi, kPi);
        const double sweep = sweeps[i % 7];
        SCOPED_TRACE(testing::Message() << "sweep " << sweep);
        const auto curve = arc(frame, radius, from, from + sweep);
        curve->SetUsageType(ANK_CURVE_USAGE_SPECIAL_LINE);
        double matrix[16];
        const std::unique_ptr<Ank_CurveEntity> flat(
            CArithmeticOfPMI::Project3DTo2D(curve.get(), matrix));
        ASSERT_NE(flat, nullptr);
        const auto& flatArc = static_cast<const Ank_Ellipse&>(*flat);
        EXPECT_EQ(flat->GetUsageType(), ANK_CURVE_USAGE_SPECIAL_LINE);
        const std::vector<Vec> inPlane = pointsOf(*flat);
        ExpectVec3Near(inPlane[2], {0, 0, 0}, 1e-9);
        float parameter[2];
        flatArc.GetParameter(parameter[0], parameter[1]);
        for (std::size_t end = 0; end < 2; ++end) {
            const double t = parameter[end];
            ExpectVec3Near(inPlane[end], Vec{std::cos(t), std::sin(t), 0.0} * radius, 1e-4);
        }
        // Counter-clockwise about the plane's normal, which is the arc's own; rounding decides for
        // a half circle.
        const bool eitherWay = sweep == kPi && flatArc.GetNormal().z < 0.0F;
        ExpectVec3Near(flatArc.GetNormal(), {0, 0, eitherWay ? -1.0 : 1.0}, 1e-3);
        ExpectVec3Near(Vec(&matrix[8]), frame.axes[2], 1e-6);

        std::vector<ANK_PNT32> points(inPlane.size());
        std::transform(inPlane.begin(), inPlane.end(), points.begin(),
                       [](const Vec& p) { return p.point32(); });
        std::vector<ANK_PNT32> back(1);
        EXPECT_EQ(CArithmeticOfPMI::Project2DTo3D(points, matrix, back), 3);
        ASSERT_EQ(back.size(), 4U);
        const std::vector<Vec> model = pointsOf(*curve);
        for (std::size_t j = 0; j < 3; ++j) {
            ExpectVec3Near(back[j + 1], model[j], 1e-4);
        }
    }
}

TEST(Projection, WhatIsNoArcGivesNothing) {
    const auto edge = line({0, 0, 0}, {1, 0, 0});
    const auto flat = arc({}, 0.0, 0.0, 1.0);
    const auto negative = arc({}, -1.0, 0.0, 1.0);
    double matrix[16] = {-7.0};
    for (Ank_CurveEntity* curve :
         std::initializer_list<Ank_CurveEntity*>{nullptr, edge.get(), flat.get(), negative.get()}) {
        EXPECT_EQ(CArithmeticOfPMI::Project3DTo2D(curve, matrix), nullptr);
    }
    EXPECT_EQ(matrix[0], -7.0);
    std::vector<ANK_PNT32> points;
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
            return frame.direction(unit({std::cos(t), std::sin(t), height}));
        };
        const ANK_PNT32 turned = CDimSymUitity::ComputeVecByAngle(
            (frame.axes[2] * 2.0).direction32(), at(from).direction32(), angle,
            frame.origin.point32(), {}, distance);
        ExpectVec3Near(turned, frame.origin + at(from + angle) * distance, 1e-4);
    }
}

} // namespace
