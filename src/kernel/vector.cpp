#include "kernel/vector.h"

#include <numbers>

#include "kernel/triple.h"

namespace dorvale {

namespace {

/// Length and unit vector of v, both written together or not at all.
int normalise(int n, const Triple& v, double* length, double* out) {
    if (!hasDirection(v)) {
        return 1;
    }
    const double norm = lengthOf(v);
    *length = norm;
    store(n, {v[0] / norm, v[1] / norm, v[2] / norm}, out);
    return 0;
}

bool haveDirections(const Triple& a, const Triple& b) { return hasDirection(a) && hasDirection(b); }

} // namespace

int CMathVector::zqvt02(int n, const double* a, const double* b, double* out) {
    *out = dotOf(load(n, a), load(n, b));
    return 0;
}

int CMathVector::zqvt03(const double* a, const double* b, double* out) {
    store(3, crossOf(load(3, a), load(3, b)), out);
    return 0;
}

int CMathVector::zqvt04(int n, const double* v, double* length, double* out) {
    return normalise(n, load(n, v), length, out);
}

int CMathVector::zqvt05(int n, const double* a, const double* b, double* angle) {
    const Triple from = load(n, a);
    const Triple to = load(n, b);
    if (!haveDirections(from, to)) {
        return -1;
    }
    *angle = angleBetween(from, to);
    return 0;
}

int CMathVector::zqvt08(const double* a, const double* b, double* length, double* out) {
    return normalise(3, crossOf(load(3, a), load(3, b)), length, out);
}

int CMathVector::zqvt09(int n, const double* a, const double* b, double* length, double* out) {
    return normalise(n, difference(load(n, a), load(n, b)), length, out);
}

int CMathVector::zqvt13(const double* a, const double* b, const double* normal, double* angle) {
    const Triple from = load(3, a);
    const Triple to = load(3, b);
    if (!haveDirections(from, to)) {
        return -1;
    }
    constexpr double turn = 2.0 * std::numbers::pi;
    const double unsignedAngle = angleBetween(from, to);
    const bool clockwise = dotOf(load(3, normal), crossOf(from, to)) < 0.0;
    const double turned = clockwise ? turn - unsignedAngle : unsignedAngle;
    *angle = turned < turn ? turned : 0.0;
    return 0;
}

int CMathVector::zkvt00(int n, const double* a, const double* b, double tol) {
    const Triple from = load(n, a);
    const Triple to = load(n, b);
    return haveDirections(from, to) && divergeBeyond(from, to, tol) ? 1 : 0;
}

} // namespace dorvale
