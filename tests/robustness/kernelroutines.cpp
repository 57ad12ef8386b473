#include "robustness/kernelroutines.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "kernel/geolib.h"
#include "kernel/matrix.h"
#include "kernel/sb.h"
#include "kernel/tesscircle.h"
#include "kernel/vector.h"
#include "support/vec.h"

namespace dorvale::test {

namespace {

/// An arc leader, and one that has none.
struct Leaders {
    Ank_Leader withArc;
    Ank_Leader bare;
    Ank_Ellipse& arc = *new Ank_Ellipse;

    explicit Leaders(const KernelInput& in) {
        withArc.SetCurve(&arc);
        arc.SetCenterPoint(Vec(in.p[0]).point32());
        arc.SetNormal(Vec(in.p[2]).direction32());
        arc.SetRadius(static_cast<float>(in.p[3][0]), static_cast<float>(in.p[3][1]));
        arc.SetCoordiantePnt(Vec(in.p[4]).point32(), Vec(in.p[5]).point32());
        arc.SetParameter(static_cast<float>(in.p[6][0]), static_cast<float>(in.p[6][1]));
    }
};

SbVec3f single(const double* p) {
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

void write(const SbVec3f& v, double* out) {
    for (std::size_t i = 0; i < 3; ++i) {
        out[i] = static_cast<double>(v[i]);
    }
}

int drawData(const KernelInput& in, double* out) {
    Leaders leaders(in);
    std::vector<double> starts;
    std::vector<double> ends;
    std::vector<int> counts;
    CTessCircle::GetCircleDrawData({&leaders.bare, &leaders.withArc, nullptr}, starts, ends, out[0],
                                   counts);
    std::copy(starts.begin(), starts.end(), out + 1);
    std::copy(ends.begin(), ends.end(), out + 4);
    std::copy(counts.begin(), counts.end(), out + 7);
    return 0;
}

/// The number of points, the first one and the last one; -1 without any.
int ends(const std::vector<ANK_PNT32>& points, double* out) {
    if (points.empty()) {
        return -1;
    }
    out[0] = static_cast<double>(points.size());
    std::ranges::copy(Vec(points.front()).array(), out + 1);
    std::ranges::copy(Vec(points.back()).array(), out + 4);
    return 0;
}

int partOfArc(const KernelInput& in, double* out) {
    const Leaders leaders(in);
    std::vector<ANK_PNT32> points;
    CTessCircle::GetCircleDiscretization(&leaders.arc, in.p[6][0], in.p[6][1], in.p[6][2], in.count,
                                         points);
    return ends(points, out);
}

int wholeArc(const KernelInput& in, double* out) {
    const Leaders leaders(in);
    std::vector<ANK_PNT32> points;
    CTessCircle::GetCircleDiscretization(&leaders.arc, in.count, points);
    return ends(points, out);
}

int angleData(const KernelInput& in, double* out) {
    int flag = 0;
    double points[4][3];
    const int status =
        CMathGeolib::GetAngleDimData(&in.p[0], &in.p[2], in.p[4], flag, points, out[0], out + 1);
    out[4] = flag;
    std::copy_n(&points[0][0], 12, out + 5);
    return status;
}

int specialLines(const KernelInput& in, double* out) {
    int count = 0;
    double points[4][3];
    const int status = CMathGeolib::GetAngleDimSpecialLineData(&in.p[0], &in.p[2], count, points);
    out[0] = count;
    std::copy_n(&points[0][0], 12, out + 1);
    return status;
}

int rotated(const KernelInput& in, double* out) {
    SbRotation rotation;
    rotation.setValue(single(in.p[0]), static_cast<float>(in.p[6][0]));
    SbVec3f turned;
    rotation.multVec(single(in.p[1]), turned);
    write(turned, out);
    return 0;
}

int closest(const KernelInput& in, double* out) {
    SbLine line;
    line.setValue(single(in.p[0]), single(in.p[1]));
    write(line.getClosestPoint(single(in.p[3])), out);
    return 0;
}

int color(const KernelInput& in, double* out) {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 0.0F;
    const SbVec3f v = single(in.p[0]);
    SbColor4f(v[0], v[1], v[2], 1.0F).getValue(r, g, b, a);
    write({r, g, b}, out);
    out[3] = static_cast<double>(a);
    return 0;
}

// One line a routine: which one, with which of the numbers.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define RUN(expression) [](const KernelInput& in, double* out) -> int { return expression; }

constexpr KernelRoutine kRoutines[] = {
    {"zqvt02", RUN(CMathVector::zqvt02(in.n, in.p[0], in.p[1], out))},
    {"zqvt03", RUN(CMathVector::zqvt03(in.p[0], in.p[1], out))},
    {"zqvt04", RUN(CMathVector::zqvt04(in.n, in.p[0], out + 3, out))},
    {"zqvt05", RUN(CMathVector::zqvt05(in.n, in.p[0], in.p[1], out))},
    {"zqvt08", RUN(CMathVector::zqvt08(in.p[0], in.p[1], out + 3, out))},
    {"zqvt09", RUN(CMathVector::zqvt09(in.n, in.p[0], in.p[1], out + 3, out))},
    {"zqvt13", RUN(CMathVector::zqvt13(in.p[0], in.p[1], in.p[2], out))},
    {"zkvt00", RUN((*out = CMathVector::zkvt00(in.n, in.p[0], in.p[1], in.tolAng), 0))},
    {"zfpt00", RUN(CMathTransform::zfpt00(in.n, 2, 3, in.p[0], in.m, out))},
    {"zfvt00", RUN(CMathTransform::zfvt00(3, 2, in.n, in.p[0], in.m, out))},
    {"zfmx03",
     RUN(CMathTransform::zfmx03(in.p[0], in.p[1], in.p[2], reinterpret_cast<double (*)[4]>(out),
                                reinterpret_cast<double (*)[4]>(out + 16)))},
    {"zqmx13", RUN(CMathMatrix::zqmx13(in.m, reinterpret_cast<double (*)[4]>(out)))},
    {"movPnt", RUN(CMathGeolib::movPnt(in.n, in.p[0], in.p[1], in.p[6][0], out))},
    {"znpp00", RUN(CMathGeolib::znpp00(in.n, in.p[0], in.p[1], out))},
    {"zhpl01", RUN(CMathGeolib::zhpl01(in.n, in.p[0], in.n, in.p[1], in.p[2], in.tolDist, in.tolAng,
                                       out, out + 3, out + 4))},
    {"zxli00", RUN(CMathGeolib::zxli00(in.p[0], in.p[1], in.p[2], in.p[3], in.tolDist, in.tolAng,
                                       out, out + 3))},
    {"zxln00", RUN(CMathGeolib::zxln00(3, in.n, in.p[0], in.p[1], in.n, in.p[2], in.p[3],
                                       in.tolDist, in.tolAng, out))},
    {"GetAngleDimData", angleData},
    {"GetAngleDimSpecialLineData", specialLines},
    {"GetCircleDrawData", drawData},
    {"GetCircleDiscretization", partOfArc},
    {"GetCircleDiscretization_Whole", wholeArc},
    {"SbVec3f",
     RUN((*out = single(in.p[0]).equals(single(in.p[1]), static_cast<float>(in.tolDist)), 0))},
    {"SbRotation", rotated},
    {"SbLine", closest},
    {"SbColor4f", color},
};

} // namespace

void KernelInput::setNumber(std::size_t i, double to) {
    auto numbers =
        std::bit_cast<std::array<double, kKernelNumbers>>(static_cast<const KernelNumbers&>(*this));
    numbers.at(i) = to;
    static_cast<KernelNumbers&>(*this) = std::bit_cast<KernelNumbers>(numbers);
}

bool KernelResult::operator==(const KernelResult& other) const {
    const auto sameBits = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    };
    return status == other.status && std::ranges::equal(out, other.out, sameBits);
}

bool KernelResult::wroteNothing() const {
    return std::ranges::count(out, kUntouched) == std::ssize(out);
}

std::span<const KernelRoutine> kernelRoutines() { return kRoutines; }

} // namespace dorvale::test
