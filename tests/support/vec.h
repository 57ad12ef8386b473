// Points and vectors of the tests, and randomness that can be repeated.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <ostream>
#include <random>

#include <gtest/gtest.h>

#include <dorvale/datamanager.h>

namespace dorvale::test {

inline constexpr double kHalfTurn = std::numbers::pi;

struct Vec {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    Vec() = default;
    Vec(double xValue, double yValue, double zValue) : x(xValue), y(yValue), z(zValue) {}
    Vec(const ANK_PNT32& p) : x(p.x), y(p.y), z(p.z) {}
    Vec(const ANK_DIR32& d) : x(d.x), y(d.y), z(d.z) {}
    explicit Vec(const double* p) : x(p[0]), y(p[1]), z(p[2]) {}

    bool operator==(const Vec&) const = default;

    std::array<double, 3> array() const { return {x, y, z}; }
    ANK_PNT32 point32() const {
        return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    }
    ANK_DIR32 direction32() const {
        return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    }
};

inline Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec operator*(const Vec& v, double f) { return {v.x * f, v.y * f, v.z * f}; }
inline double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec& v) { return std::hypot(v.x, v.y, v.z); }
inline Vec unit(const Vec& v) { return v * (1.0 / length(v)); }

/// The angle from one direction to another, counter-clockwise about a normal, from 0 up to a turn.
inline double turnAbout(const Vec& normal, const Vec& from, const Vec& to) {
    const double angle = std::atan2(dot(normal, cross(from, to)), dot(from, to));
    return angle < 0.0 ? angle + 2.0 * kHalfTurn : angle;
}
/// A direction of the XY plane.
inline Vec towards(double angle) { return {std::cos(angle), std::sin(angle), 0.0}; }

inline std::ostream& operator<<(std::ostream& out, const Vec& v) {
    return out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

/// Fails at the caller's line where the two lie further apart than the tolerance.
inline void ExpectVec3Near(const Vec& actual, const Vec& expected, double tolerance,
                           const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!(length(actual - expected) <= tolerance)) {
        GTEST_MESSAGE_AT_(file, line, "", testing::TestPartResult::kNonFatalFailure)
            << "got " << actual << ", expected " << expected << ", apart by "
            << length(actual - expected) << ", allowed " << tolerance;
    }
}

/// The same numbers on every platform. `SCOPED_TRACE(random)` tells how to get back to a failure.
class Random {
public:
    explicit Random(std::uint64_t seed) : seed_(seed), engine_(seed) {}

    double number(double from, double to) {
        ++drawn_;
        return from + (to - from) * static_cast<double>(engine_() >> 11U) * 0x1p-53;
    }
    Vec point(double reach = 100.0) {
        const double x = number(-reach, reach);
        const double y = number(-reach, reach);
        return {x, y, number(-reach, reach)};
    }
    /// Evenly spread over the sphere.
    Vec direction() {
        const double z = number(-1.0, 1.0);
        const double t = number(0.0, 2.0 * std::numbers::pi);
        const double r = std::sqrt(1.0 - z * z);
        return {r * std::cos(t), r * std::sin(t), z};
    }

    friend std::ostream& operator<<(std::ostream& out, const Random& random) {
        return out << "seed " << random.seed_ << ", " << random.drawn_ << " numbers drawn";
    }

private:
    std::uint64_t seed_;
    std::mt19937_64 engine_;
    int drawn_ = 0;
};

} // namespace dorvale::test
