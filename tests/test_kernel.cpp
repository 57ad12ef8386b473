// The numerical routines: tables, figures by hand, and laws over random input.
#include <algorithm>
#include <limits>

#include "geometry/drawnarc.h"
#include "kernel/geolib.h"
#include "kernel/matrix.h"
#include "kernel/sb.h"
#include "kernel/tesscircle.h"
#include "kernel/vector.h"
#include "support/rigid.h"

using namespace dorvale;
using namespace dorvale::test;

namespace {

constexpr int kCases = 500;
/// What no routine computes: stays where a routine writes nothing.
constexpr double kUntouched = -777.25;

using Doubles = std::array<double, 8>;

Doubles untouched() {
    Doubles out;
    out.fill(kUntouched);
    return out;
}

/// The nearest points of two lines, with their distances along them.
int meet(const Vec& a, const Vec& alongA, const Vec& b, const Vec& alongB, double angle,
         Doubles& out) {
    return CMathGeolib::zxln00(3, 3, a.array().data(), alongA.array().data(), 3, b.array().data(),
                               alongB.array().data(), 0.005, angle, out.data());
}

/// Where a line meets a plane, and its distance along the line.
int pierce(const Vec& point, const Vec& along, const Vec& plane, const Vec& normal, double angle,
           Doubles& out) {
    return CMathGeolib::zxli00(point.array().data(), along.array().data(), plane.array().data(),
                               normal.array().data(), 0.01, angle, out.data(), &out[3]);
}

TEST(KernelVectors, WorkInPlaceAndInTwoDimensions) {
    const double from[2] = {1.0, 1.0};
    double v[3] = {4.0, 5.0, kUntouched};
    double size = 0.0;
    EXPECT_EQ(CMathVector::zqvt09(2, v, from, &size, v), 0);
    EXPECT_EQ(size, 5.0);
    ExpectVec3Near(Vec(v), {0.6, 0.8, kUntouched}, 1e-15);
    // The foot of the perpendicular from there on a line through (1, 1).
    const double to[2] = {1.0, 9.0};
    double along = 0.0;
    EXPECT_EQ(CMathGeolib::zhpl01(2, v, 2, from, to, 0.01, 0.01, v, &along, &size), 0);
    ExpectVec3Near(Vec(v), {1.0, 0.8, kUntouched}, 1e-15);
    EXPECT_NEAR(along, -0.2, 1e-15);
    EXPECT_NEAR(size, 0.4, 1e-15);
}

TEST(KernelVectors, GiveUnitVectorsBackAsTheyAre) {
    for (const Vec& direction : {Vec{0.0, 0.0, -1.0}, Vec{0.28, -0.96, 0.0}}) {
        double size = 0.0;
        double out[3] = {};
        EXPECT_EQ(CMathVector::zqvt04(3, direction.array().data(), &size, out), 0);
        EXPECT_EQ(size, 1.0);
        EXPECT_EQ(Vec(out), direction);
    }
}

TEST(KernelVectors, RefuseWhatHasNoResultAndWriteNothing) {
    const double x[3] = {2.0, 0.0, 0.0};
    const double back[3] = {-3.0, 0.0, 0.0};
    const double zero[3] = {};
    Doubles out = untouched();
    for (const double size : {1e-11, std::numeric_limits<double>::quiet_NaN()}) {
        const double bad[3] = {size, 0.0, 0.0};
        EXPECT_NE(CMathVector::zqvt04(3, bad, out.data(), out.data() + 1), 0);
        EXPECT_LT(CMathVector::zqvt05(3, bad, x, out.data()), 0);
        EXPECT_NE(CMathVector::zqvt13(x, bad, x, out.data()), 0);
        EXPECT_EQ(CMathVector::zkvt00(3, bad, x, 0.01), 0);
        EXPECT_NE(CMathGeolib::zhpl01(3, x, 3, bad, zero, 0.01, 0.01, out.data(), &out[3], &out[4]),
                  0);
        EXPECT_NE(pierce(Vec(x), Vec(bad), Vec(x), Vec(x), 0.01, out), 0);
        EXPECT_NE(pierce(Vec(x), Vec(x), Vec(x), Vec(bad), 0.01, out), 0);
        EXPECT_LT(meet(Vec(x), Vec(bad), Vec(x), Vec(x), 0.01, out), 0);
        EXPECT_LT(meet(Vec(x), Vec(x), Vec(x), Vec(bad), 0.01, out), 0);
    }
    EXPECT_NE(CMathVector::zqvt08(x, back, out.data(), out.data() + 1), 0);
    EXPECT_NE(CMathVector::zqvt09(3, x, x, out.data(), out.data() + 1), 0);
    EXPECT_EQ(out, untouched());
}

TEST(KernelVectors, AngleAboutANormalIsLessThanATurn) {
    const auto angle = [](const Vec& a, const Vec& b) {
        double about = kUntouched;
        const double up[3] = {0.0, 0.0, 1.0};
        EXPECT_EQ(CMathVector::zqvt13(a.array().data(), b.array().data(), up, &about), 0);
        return about;
    };
    EXPECT_EQ(angle({0.1, 0.7, 0.3}, {0.1, 0.7, 0.3}), 0.0);
    EXPECT_EQ(angle({1.0, 0.0, 0.0}, {1.0, -1e-17, 0.0}), 0.0);
    EXPECT_NEAR(angle({1.0, 0.0, 0.0}, {0.0, -5.0, 0.0}), 1.5 * kHalfTurn, 1e-15);
}

TEST(KernelVectors, IndependenceStartsAtTheTolerance) {
    const Vec x{1.0, 0.0, 0.0};
    const Vec y{0.0, 1.0, 0.0};
    for (const double base : {0.0, kHalfTurn}) {
        for (const double off : {-1.1e-3, -0.9e-3, 0.9e-3, 1.1e-3}) {
            SCOPED_TRACE(base + off);
            const Vec v = towards(base + off);
            const bool beyond = std::abs(off) > 1e-3;
            Doubles out{};
            EXPECT_EQ(CMathVector::zkvt00(3, x.array().data(), v.array().data(), 1e-3),
                      beyond ? 1 : 0);
            EXPECT_EQ(pierce(y, v, {}, y, 1e-3, out), beyond ? 0 : 1);
            EXPECT_EQ(meet(y, x, {}, v, 1e-3, out), beyond ? 0 : 1);
        }
    }
}

TEST(KernelMatrices, InverseTimesMatrixIsIdentity) {
    Random random(3);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        double m[4][4];
        double inverse[4][4];
        for (auto& row : m) {
            const double scale = std::pow(10.0, random.number(-6.0, 6.0));
            std::generate(row, row + 4, [&] { return scale * random.number(-1.0, 1.0); });
        }
        std::copy_n(&m[0][0], 16, &inverse[0][0]);
        ASSERT_EQ(CMathMatrix::zqmx13(inverse, inverse), 0);
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c) {
                double sum = 0.0;
                double size = 1.0;
                for (int k = 0; k < 4; ++k) {
                    sum += m[r][k] * inverse[k][c];
                    size = std::max(size, std::abs(m[r][k] * inverse[k][c]));
                }
                EXPECT_NEAR(sum, r == c ? 1.0 : 0.0, 1e-11 * size);
            }
        }
    }
    const double singular[4][4] = {{1, 2, 3, 4}, {2, 4, 6, 8}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    double out[4][4] = {{kUntouched}};
    EXPECT_NE(CMathMatrix::zqmx13(singular, out), 0);
    EXPECT_EQ(out[0][0], kUntouched);
}

TEST(KernelIntersections, PointsLieOnBoth) {
    Random random(5);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec meeting = random.point();
        const Vec dA = random.direction();
        const Vec dB = random.direction();
        if (length(cross(dA, dB)) < 0.01 || std::abs(dot(dA, dB)) < 0.01) {
            continue;
        }
        const double reachA = random.number(-100.0, 100.0);
        const double reachB = random.number(-100.0, 100.0);
        const Vec a = meeting - dA * reachA;
        const Vec b = meeting - dB * reachB;
        Doubles out{};
        ASSERT_EQ(pierce(a, dA, meeting, dB, 0.00026, out), 0);
        ExpectVec3Near(Vec(out.data()), meeting, 1e-8);
        EXPECT_NEAR(out[3], reachA, 1e-8);
        ASSERT_EQ(meet(a, dA, b, dB, 6.5e-5, out), 0);
        ExpectVec3Near(Vec(out.data()), meeting, 1e-8);
        ExpectVec3Near(Vec(&out[4]), meeting, 1e-8);
        EXPECT_NEAR(out[3], reachA, 1e-8);
        EXPECT_NEAR(out[7], reachB, 1e-8);
        // Lines that miss each other by the tolerance still meet; further apart nothing is written.
        const Vec apart = unit(cross(dA, dB));
        EXPECT_EQ(meet(a + apart * 0.0049, dA, b, dB, 6.5e-5, out), 0);
        const Doubles before = out;
        EXPECT_EQ(meet(a + apart * 0.0051, dA, b, dB, 6.5e-5, out), 2);
        EXPECT_EQ(out, before);
    }
}

TEST(KernelAngle, StandsAboutTheVertexOnTheSideOfTheText) {
    // An L whose edges end 2 short of its corner (10, 5); the text is 10 away from that. Heights do
    // not count.
    const double edge1[2][3] = {{12, 5, 3}, {20, 5, -3}};
    const double edge2[2][3] = {{10, 15, -3}, {10, 7, 3}};
    const Vec corner{10, 5, 0};
    int number = -1;
    double points[4][3];
    for (const bool inside : {true, false}) {
        const double side = inside ? 1.0 : -1.0;
        const double text[3] = {10 + 6 * side, 5 + 8 * side, 9};
        double angle = kUntouched;
        double vertex[3];
        CMathGeolib::GetAngleDimData(edge1, edge2, text, number, points, angle, vertex);
        EXPECT_EQ(number, inside ? 0 : 3);
        EXPECT_NEAR(angle, 0.5 * kHalfTurn, 1e-12);
        ExpectVec3Near(Vec(vertex), corner, 1e-12);
        ExpectVec3Near(Vec(points[0]), {inside ? 20.0 : 12.0, 5, 0}, 1e-12);
        ExpectVec3Near(Vec(points[1]), {10 + 10 * side, 5, 0}, 1e-12);
        ExpectVec3Near(Vec(points[2]), {10, inside ? 15.0 : 7.0, 0}, 1e-12);
        ExpectVec3Near(Vec(points[3]), {10, 5 + 10 * side, 0}, 1e-12);
    }
    CMathGeolib::GetAngleDimSpecialLineData(edge1, edge2, number, points);
    EXPECT_EQ(number, 2);
    const Vec expected[] = {corner, {12, 5, 0}, corner, {10, 7, 0}};
    for (std::size_t i = 0; i < 4; ++i) {
        ExpectVec3Near(Vec(points[i]), expected[i], 1e-12);
    }
}

TEST(KernelAngle, OfParallelEdgesIsAnEmptyArcAtTheText) {
    const double edge1[2][3] = {{0, 0, 0}, {10, 0, 0}};
    const double edge2[2][3] = {{8, 5, 0}, {0, 5, 0}};
    const double text[3] = {3.0, 2.0, 9.0};
    int number = -1;
    double points[4][3];
    double angle = kUntouched;
    double vertex[3];
    CMathGeolib::GetAngleDimData(edge1, edge2, text, number, points, angle, vertex);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(angle, 0.0);
    for (const double* p : {vertex, points[0], points[1], points[2], points[3]}) {
        EXPECT_EQ(Vec(p), Vec(3.0, 2.0, 0.0));
    }
}

TEST(KernelTessellation, RunsAlongTheArcInEvenSteps) {
    constexpr double turn = 2.0 * kHalfTurn;
    const struct {
        float radius, from, to;
        bool downwards;
        double sweep;
        int points;
    } cases[] = {
        {10.0F, 0.5F, 2.0F, false, 1.5, 5},   {10.0F, 2.0F, 0.5F, false, turn - 1.5, 15},
        {10.0F, 2.0F, 0.5F, true, -1.5, 5},   {10.0F, 0.5F, 2.0F, true, 1.5 - turn, 15},
        {10.0F, -3.0F, 3.0F, false, 6.0, 19}, {10.0F, -3.0F, 3.0F, true, 6.0 - turn, 4},
        {0.5F, 0.0F, 3.0F, false, 3.0, 4},    {1e6F, -3.0F, 3.0F, false, 6.0, 1001},
        {2.0F, 1.0F, 1.0F, false, 0.0, 4},    {2.0F, 1.0F, 1.0F, true, 0.0, 4},
    };
    Ank_Leader bare;
    std::vector<double> starts{9.0};
    std::vector<double> ends;
    std::vector<int> counts;
    double radius = -1.0;
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.radius << ' ' << c.from << ' ' << c.to << ' ' << c.downwards);
        Ank_Leader leader;
        auto* const arc = new Ank_Ellipse;
        leader.SetCurve(arc);
        const Vec center{5.0, -3.0, 2.0};
        // How far the ends stand from the centre, and how high, does not count.
        const auto end = [&](double angle) {
            return (center + Vec{8.0 * std::cos(angle), 8.0 * std::sin(angle), 8.0}).point32();
        };
        const ANK_PNT32 first = end(c.from);
        arc->SetCenterPoint(center.point32());
        arc->SetNormal({0.6F, 0.0F, c.downwards ? -0.8F : 0.8F});
        arc->SetRadius(c.radius, c.radius);
        arc->SetCoordiantePnt(first, end(c.to));
        EXPECT_TRUE(CTessCircle::GetCircleDrawData({nullptr, &leader, &bare}, starts, ends, radius,
                                                   counts));
        EXPECT_EQ(radius, c.radius);
        EXPECT_EQ(starts,
                  (std::vector<double>{0.0, std::atan2(first.y + 3.0F, first.x - 5.0F), 0.0}));
        EXPECT_NEAR(starts.at(1), c.from, 1e-6);
        EXPECT_NEAR(ends.at(1), c.from + c.sweep, 1e-6);
        EXPECT_EQ(counts, (std::vector{0, c.points, 0}));
        std::vector<ANK_PNT32> points(1);
        ASSERT_TRUE(CTessCircle::GetCircleDiscretization(arc, 0, points));
        ASSERT_EQ(points.size(), static_cast<std::size_t>(c.points) + 1);
        for (int i = 0; i < c.points; ++i) {
            const double t = c.from + c.sweep * i / (c.points - 1);
            const Vec at = center + Vec{c.radius * std::cos(t), c.radius * std::sin(t), 0.0};
            ExpectVec3Near(points.at(static_cast<std::size_t>(i) + 1), at,
                           2e-6 * std::max(c.radius, 1.0F));
        }
    }
    EXPECT_FALSE(CTessCircle::GetCircleDrawData({&bare, nullptr}, starts, ends, radius, counts));
    Ank_Ellipse arc;
    arc.SetCoordiantePnt({1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F});
    arc.SetRadius(std::numeric_limits<float>::infinity(), 1.0F);
    EXPECT_EQ(drawnArc(arc).count, 1001);
    std::vector<ANK_PNT32> points;
    EXPECT_FALSE(CTessCircle::GetCircleDiscretization(nullptr, 0, points));
    EXPECT_FALSE(CTessCircle::GetCircleDiscretization(nullptr, 0.0, 1.0, 1.0, 5, points));
    EXPECT_FALSE(CTessCircle::GetCircleDiscretization(&arc, 0.0, 1.0, 1.0, 0, points));
    EXPECT_TRUE(CTessCircle::GetCircleDiscretization(&arc, 1, points));
    EXPECT_EQ(points.size(), 1U);
}

TEST(KernelSinglePrecision, PointsCoincideBySquaredDistance) {
    EXPECT_TRUE(SbVec3f(0, 0, 0).equals(SbVec3f(0.31F, 0, 0), 0.1F));
    EXPECT_FALSE(SbVec3f(0, 0, 0).equals(SbVec3f(0.32F, 0, 0), 0.1F));
    SbLine line;
    const auto closest = [&line] {
        const SbVec3f foot = line.getClosestPoint(SbVec3f(9, 7, 1));
        return Vec{foot[0], foot[1], foot[2]};
    };
    line.setValue(SbVec3f(5, 5, 5), SbVec3f(5, 5, 5));
    ExpectVec3Near(closest(), {5.0, 5.0, 5.0}, 0.0);
    line.setValue(SbVec3f(0, 1, 0), SbVec3f(4, 1, 0));
    ExpectVec3Near(closest(), {9.0, 1.0, 0.0}, 0.0);
}

} // namespace
