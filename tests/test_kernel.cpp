// The numerical routines: tables for what they refuse, laws over random input for what they
// compute.
#include <algorithm>
#include <limits>

#include "kernel/geolib.h"
#include "kernel/matrix.h"
#include "kernel/sb.h"
#include "kernel/tesscircle.h"
#include "kernel/vector.h"
#include "support/scene.h"

using namespace dorvale;
using namespace dorvale::test;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kCases = 500;
/// What no routine computes: stays where a routine writes nothing.
constexpr double kUntouched = -777.25;

using Doubles = std::array<double, 8>;

Doubles untouched() {
    Doubles out;
    out.fill(kUntouched);
    return out;
}

double angleAbout(const Vec& normal, const Vec& a, const Vec& b) {
    double angle = kUntouched;
    EXPECT_EQ(
        CMathVector::zqvt13(a.array().data(), b.array().data(), normal.array().data(), &angle), 0);
    return angle;
}

Vec turned(const Vec& v, const Vec& axis, double angle) {
    SbRotation rotation;
    rotation.setValue(SbVec3f(axis.array()), static_cast<float>(angle));
    SbVec3f out;
    rotation.multVec(SbVec3f(v.array()), out);
    return Vec(out.wide().data());
}

TEST(KernelVectors, NormaliseInPlaceAndInTwoDimensions) {
    double v[3] = {3.0, 4.0, 0.0};
    double size = 0.0;
    EXPECT_EQ(CMathVector::zqvt04(3, v, &size, v), 0);
    EXPECT_EQ(size, 5.0);
    ExpectVec3Near(Vec(v), {0.6, 0.8, 0.0}, 1e-15);
    const double from[2] = {1.0, 1.0};
    double flat[3] = {7.0, 1.0, kUntouched};
    EXPECT_EQ(CMathVector::zqvt09(2, flat, from, &size, flat), 0);
    ExpectVec3Near(Vec(flat), {1.0, 0.0, kUntouched}, 1e-15);
}

TEST(KernelVectors, RefuseWhatHasNoResultAndWriteNothing) {
    const double zero[3] = {1e-11, 0.0, 0.0};
    const double nan[3] = {std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0};
    const double x[3] = {2.0, 0.0, 0.0};
    const double back[3] = {-3.0, 0.0, 0.0};
    Doubles out = untouched();
    for (const double* bad : {zero, nan}) {
        EXPECT_NE(CMathVector::zqvt04(3, bad, out.data(), out.data() + 1), 0);
        EXPECT_LT(CMathVector::zqvt05(3, bad, x, out.data()), 0);
        EXPECT_NE(CMathVector::zqvt13(x, bad, x, out.data()), 0);
        EXPECT_EQ(CMathVector::zkvt00(3, bad, x, 0.01), 0);
        EXPECT_NE(CMathGeolib::zhpl01(3, x, 3, bad, zero, 0.01, 0.01, out.data(), out.data() + 3,
                                      out.data() + 4),
                  0);
        EXPECT_NE(CMathGeolib::zxli00(x, bad, x, x, 0.01, 0.01, out.data(), out.data() + 3), 0);
        EXPECT_LT(CMathGeolib::zxln00(3, 3, x, bad, 3, x, x, 0.01, 0.01, out.data()), 0);
    }
    EXPECT_NE(CMathVector::zqvt08(x, back, out.data(), out.data() + 1), 0);
    EXPECT_NE(CMathVector::zqvt09(3, x, x, out.data(), out.data() + 1), 0);
    EXPECT_EQ(out, untouched());
}

TEST(KernelVectors, AngleAboutANormalTurnsOneDirectionIntoTheOther) {
    Random random(1);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec a = random.direction();
        const Vec b = random.direction();
        const Vec normal = unit(cross(a, b)) * (i % 2 == 0 ? 1.0 : -1.0);
        const double there = angleAbout(normal, a, b);
        ExpectVec3Near(turned(a, normal, there), b, 1e-6);
        EXPECT_NEAR(there + angleAbout(normal, b, a), 2.0 * kPi, 1e-12);
        double unsignedAngle = 0.0;
        CMathVector::zqvt05(3, a.array().data(), (b * 3.0).array().data(), &unsignedAngle);
        EXPECT_NEAR(unsignedAngle, std::min(there, 2.0 * kPi - there), 1e-12);
    }
    EXPECT_EQ(angleAbout({0.0, 0.0, 1.0}, {0.1, 0.7, 0.3}, {0.1, 0.7, 0.3}), 0.0);
    EXPECT_LT(angleAbout({0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, {1.0, -1e-17, 0.0}), 2.0 * kPi);
}

TEST(KernelVectors, IndependenceStartsAtTheTolerance) {
    const double x[3] = {1.0, 0.0, 0.0};
    for (const double base : {0.0, kPi}) {
        for (const double off : {-1.1e-3, -0.9e-3, 0.9e-3, 1.1e-3}) {
            const double v[3] = {std::cos(base + off), std::sin(base + off), 0.0};
            EXPECT_EQ(CMathVector::zkvt00(3, x, v, 1e-3), std::abs(off) > 1e-3 ? 1 : 0) << off;
        }
    }
}

TEST(KernelMatrices, FrameCarriesThereAndBack) {
    Random random(2);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Rigid frame = Rigid::random(random);
        const Vec p = random.point();
        double toLocal[4][4];
        double toModel[4][4];
        CMathTransform::zfmx03(frame.origin.array().data(), frame.axes[2].array().data(),
                               frame.axes[0].array().data(), toLocal, toModel);
        double at[3] = {p.x, p.y, p.z};
        CMathTransform::zfpt00(3, 1, 3, at, toLocal, at);
        ExpectVec3Near(Vec(at), frame.pointBack(p), 1e-12);
        CMathTransform::zfpt00(3, 1, 3, at, toModel, at);
        ExpectVec3Near(Vec(at), p, 1e-12);
        CMathTransform::zfvt00(3, 1, 3, at, toModel, at);
        ExpectVec3Near(Vec(at), frame.direction(p), 1e-12);
        double inverse[4][4];
        ASSERT_EQ(CMathMatrix::zqmx13(toModel, inverse), 0);
        for (int j = 0; j < 16; ++j) {
            EXPECT_NEAR(inverse[j / 4][j % 4], toLocal[j / 4][j % 4], 1e-12);
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
                double size = 0.0;
                for (int k = 0; k < 4; ++k) {
                    sum += m[r][k] * inverse[k][c];
                    size += std::abs(m[r][k] * inverse[k][c]);
                }
                EXPECT_NEAR(sum, r == c ? 1.0 : 0.0, 1e-11 * std::max(size, 1.0));
            }
        }
    }
    const double singular[4][4] = {{1, 2, 3, 4}, {2, 4, 6, 8}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    double out[4][4] = {{kUntouched}};
    EXPECT_NE(CMathMatrix::zqmx13(singular, out), 0);
    EXPECT_EQ(out[0][0], kUntouched);
}

TEST(KernelIntersections, FootOfPerpendicularIsTheNearestPoint) {
    Random random(4);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const int n = 2 + i % 2;
        const auto drawn = [&] {
            const Vec p = random.point();
            return n == 2 ? Vec{p.x, p.y, 0.0} : p;
        };
        const Vec p = drawn();
        const Vec a = drawn();
        const Vec b = drawn();
        Doubles out{};
        ASSERT_EQ(CMathGeolib::zhpl01(n, p.array().data(), n, a.array().data(), b.array().data(),
                                      0.01, 0.00026, out.data(), &out[3], &out[4]),
                  0);
        const Vec foot(out.data());
        EXPECT_NEAR(dot(p - foot, unit(b - a)), 0.0, 1e-10);
        ExpectVec3Near(a + unit(b - a) * out[3], foot, 1e-10);
        EXPECT_NEAR(out[4], length(cross(p - a, unit(b - a))), 1e-10);
    }
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
        const auto a = (meeting - dA * reachA).array();
        const auto b = (meeting - dB * reachB).array();
        Doubles out = untouched();
        ASSERT_EQ(CMathGeolib::zxli00(a.data(), dA.array().data(), meeting.array().data(),
                                      dB.array().data(), 0.01, 0.00026, out.data(), &out[3]),
                  0);
        ExpectVec3Near(Vec(out.data()), meeting, 1e-8);
        EXPECT_NEAR(out[3], reachA, 1e-8);
        ASSERT_EQ(CMathGeolib::zxln00(3, 3, a.data(), dA.array().data(), 3, b.data(),
                                      dB.array().data(), 0.005, 6.5e-5, out.data()),
                  0);
        ExpectVec3Near(Vec(out.data()), meeting, 1e-8);
        ExpectVec3Near(Vec(&out[4]), meeting, 1e-8);
        EXPECT_NEAR(out[3], reachA, 1e-8);
        EXPECT_NEAR(out[7], reachB, 1e-8);

        const Doubles before = out = untouched();
        const Vec apart = unit(cross(dA, dB)) * (i % 2 == 0 ? 0.0049 : 0.0051);
        EXPECT_EQ(CMathGeolib::zxln00(3, 3, (Vec(a.data()) + apart).array().data(),
                                      dA.array().data(), 3, b.data(), dB.array().data(), 0.005,
                                      6.5e-5, out.data()),
                  i % 2 == 0 ? 0 : 2);
        EXPECT_EQ(out == before, i % 2 != 0);
    }
}

TEST(KernelIntersections, RefuseParallelsWithinTheTolerance) {
    const double origin[3] = {};
    const double x[3] = {1.0, 0.0, 0.0};
    const double y[3] = {0.0, 1.0, 0.0};
    for (const double off : {-1.1e-3, -0.9e-3, 0.9e-3, 1.1e-3}) {
        const double along[3] = {std::cos(off), std::sin(off), 0.0};
        const double against[3] = {-along[0], -along[1], 0.0};
        const int parallel = std::abs(off) > 1e-3 ? 0 : 1;
        Doubles out{};
        EXPECT_EQ(CMathGeolib::zxli00(y, along, origin, y, 0.01, 1e-3, out.data(), &out[3]),
                  parallel);
        EXPECT_EQ(CMathGeolib::zxln00(3, 3, y, x, 3, origin, against, 0.01, 1e-3, out.data()),
                  parallel);
    }
}

/// An edge of an angle dimension by what stands along its line from the vertex.
struct AngleEdge {
    Vec vertex;
    Vec direction;
    double from;
    double to;
    double points[2][3]{};

    AngleEdge(const Vec& center, Random& random)
        : vertex(center), from(random.number(-60.0, 60.0)), to(from + random.number(5.0, 60.0)) {
        const double angle = random.number(0.0, 2.0 * kPi);
        direction = {std::cos(angle), std::sin(angle), 0.0};
        // z is dropped
        const Vec start = vertex + direction * from + Vec{0.0, 0.0, 5.0};
        const Vec end = vertex + direction * to - Vec{0.0, 0.0, 5.0};
        std::copy_n(start.array().data(), 3, points[0]);
        std::copy_n(end.array().data(), 3, points[1]);
    }
    bool contains(const Vec& p) const {
        const double at = dot(p - vertex, direction);
        return at > from - 0.01 && at < to + 0.01;
    }
    Vec endNearer(const Vec& p) const {
        const double at = dot(p - vertex, direction);
        return vertex + direction * (at < (from + to) / 2.0 ? from : to);
    }
};

TEST(KernelAngle, RaysEncloseTheTextAndGapsAreBridged) {
    Random random(6);
    for (int i = 0; i < kCases; ++i) {
        SCOPED_TRACE(random);
        const Vec center{random.number(-50.0, 50.0), random.number(-50.0, 50.0), 0.0};
        const AngleEdge edges[2] = {{center, random}, {center, random}};
        if (length(cross(edges[0].direction, edges[1].direction)) < 0.05) {
            continue;
        }
        const Vec text{random.number(-99.0, 99.0), random.number(-99.0, 99.0), 0.0};
        int flag = -1;
        double points[4][3];
        double angle = kUntouched;
        double vertex[3];
        CMathGeolib::GetAngleDimData(edges[0].points, edges[1].points, text.array().data(), flag,
                                     points, angle, vertex);
        ExpectVec3Near(Vec(vertex), center, 1e-9);
        const Vec ray1 = Vec(points[1]) - center;
        const Vec ray2 = Vec(points[3]) - center;
        double bend = std::atan2(cross(ray1, ray2).z, dot(ray1, ray2));
        EXPECT_NEAR(angle, bend < 0.0 ? bend + 2.0 * kPi : bend, 1e-9);
        const auto between = [](const Vec& a, const Vec& b) {
            return std::atan2(length(cross(a, b)), dot(a, b));
        };
        EXPECT_NEAR(between(ray1, text - center) + between(text - center, ray2), std::abs(bend),
                    1e-9);
        int expectedFlag = 0;
        int expectedLines = 0;
        int lines = -1;
        double special[4][3];
        CMathGeolib::GetAngleDimSpecialLineData(edges[0].points, edges[1].points, lines, special);
        for (int e = 0; e < 2; ++e) {
            const Vec arcEnd(points[2 * e + 1]);
            EXPECT_NEAR(length(arcEnd - center), length(text - center), 1e-9);
            EXPECT_NEAR(length(cross(arcEnd - center, edges[e].direction)), 0.0, 1e-9);
            expectedFlag += edges[e].contains(arcEnd) ? 0 : e + 1;
            ExpectVec3Near(Vec(points[2 * e]), edges[e].endNearer(arcEnd), 1e-9);
            if (!edges[e].contains(center)) {
                ExpectVec3Near(Vec(special[2 * expectedLines]), center, 1e-9);
                ExpectVec3Near(Vec(special[2 * expectedLines + 1]), edges[e].endNearer(center),
                               1e-9);
                ++expectedLines;
            }
        }
        EXPECT_EQ(flag, expectedFlag);
        EXPECT_EQ(lines, expectedLines);
        for (int unused = 2 * lines; unused < 4; ++unused) {
            EXPECT_EQ(Vec(special[unused]), Vec());
        }
    }
}

TEST(KernelAngle, ParallelEdgesGiveAnEmptyArcAtTheText) {
    const double edge1[2][3] = {{0, 0, 0}, {10, 0, 0}};
    const double edge2[2][3] = {{8, 5, 0}, {0, 5, 0}};
    const double text[3] = {3.0, 2.0, 9.0};
    int flag = -1;
    double points[4][3];
    double angle = kUntouched;
    double vertex[3];
    CMathGeolib::GetAngleDimData(edge1, edge2, text, flag, points, angle, vertex);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(angle, 0.0);
    for (const double* p : {vertex, points[0], points[1], points[2], points[3]}) {
        EXPECT_EQ(Vec(p), Vec(3.0, 2.0, 0.0));
    }
    CMathGeolib::GetAngleDimSpecialLineData(edge1, edge2, flag, points);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(Vec(points[0]), Vec());
}

/// An arc leader in the plane, by its parameters.
std::unique_ptr<Ank_Leader> arcLeader(double radius, double from, double to, bool downwards) {
    auto leader = std::make_unique<Ank_Leader>();
    std::unique_ptr<Ank_Ellipse> made = arc({}, radius, from, to);
    made->SetCenterPoint({5.0F, -3.0F, 2.0F});
    made->SetNormal({0.0F, 0.0F, downwards ? -1.0F : 1.0F});
    leader->SetCurve(made.release());
    return leader;
}

TEST(KernelTessellation, RunsAlongTheArcInEvenSteps) {
    constexpr double hugeRadius = 1e6;
    struct Case {
        double radius, from, to;
        bool downwards;
        double sweep;
    };
    const Case cases[] = {
        {10.0, 0.5, 2.0, false, 1.5},  {10.0, 2.0, 0.5, false, 2.0 * kPi - 1.5},
        {10.0, 2.0, 0.5, true, -1.5},  {10.0, 0.5, 2.0, true, 1.5 - 2.0 * kPi},
        {10.0, -3.0, 3.0, false, 6.0}, {10.0, -3.0, 3.0, true, 6.0 - 2.0 * kPi},
        {0.5, 0.0, kPi, false, kPi},   {hugeRadius, 0.0, 6.0, false, 6.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.radius << ' ' << c.from << ' ' << c.to << ' ' << c.downwards);
        const auto leader = arcLeader(c.radius, c.from, c.to, c.downwards);
        const Ank_Ellipse* const drawn = CTessCircle::arcOf(leader.get());
        std::vector<ANK_PNT32> points;
        ASSERT_TRUE(CTessCircle::GetCircleDiscretization(drawn, 0, points));
        const std::size_t chords = points.size() - 1;
        EXPECT_GE(chords, 3U);
        EXPECT_LE(chords, 1000U);
        if (chords > 3 && chords < 1000) {
            EXPECT_NEAR(static_cast<double>(chords), c.radius * std::abs(c.sweep) / 3.36, 0.5);
        }
        for (std::size_t i = 0; i <= chords; ++i) {
            const double t =
                c.from + c.sweep * static_cast<double>(i) / static_cast<double>(chords);
            ExpectVec3Near(points[i],
                           Vec{5.0, -3.0, 2.0} + Vec{std::cos(t), std::sin(t), 0.0} * c.radius,
                           1e-6 * std::max(c.radius, 1.0));
        }
    }
}

TEST(KernelTessellation, TellsTheDrawnPartOfEveryLeader) {
    const auto small = arcLeader(2.0, 1.0, 1.0, false);
    const auto large = arcLeader(50.0, 3.0, 1.0, false);
    const auto endless = arcLeader(std::numeric_limits<double>::infinity(), 0.0, 1.0, false);
    Ank_Leader bare;
    std::vector<double> starts{9.0};
    std::vector<double> ends;
    std::vector<int> counts;
    double radius = -1.0;
    EXPECT_TRUE(CTessCircle::GetCircleDrawData({small.get(), nullptr, &bare, large.get()}, starts,
                                               ends, radius, counts));
    EXPECT_EQ(radius, 50.0);
    EXPECT_EQ(starts, (std::vector{1.0, 0.0, 0.0, 3.0}));
    EXPECT_EQ(ends[0], 1.0);
    EXPECT_NEAR(ends[3], 1.0 + 2.0 * kPi, 1e-9);
    EXPECT_EQ(counts, (std::vector{4, 0, 0, 65}));
    CTessCircle::GetCircleDrawData({endless.get()}, starts, ends, radius, counts);
    EXPECT_EQ(counts, std::vector{1001});
    EXPECT_FALSE(CTessCircle::GetCircleDrawData({&bare, nullptr}, starts, ends, radius, counts));
}

TEST(KernelSinglePrecision, PointsCoincideBySquaredDistance) {
    EXPECT_TRUE(SbVec3f(0, 0, 0).equals(SbVec3f(0.31F, 0, 0), 0.1F));
    EXPECT_FALSE(SbVec3f(0, 0, 0).equals(SbVec3f(0.32F, 0, 0), 0.1F));
    ExpectVec3Near(turned({1.0, 2.0, 3.0}, {0.0, 0.0, 0.0}, 1.0), {1.0, 2.0, 3.0}, 0.0);
    SbLine line;
    line.setValue(SbVec3f(0, 1, 0), SbVec3f(4, 1, 0));
    ExpectVec3Near(Vec(line.getClosestPoint(SbVec3f(9, 7, 1)).wide().data()), {9.0, 1.0, 0.0}, 0.0);
}

} // namespace
