// Every numerical routine in one table, each called with numbers from one plain record.
#pragma once

#include <array>
#include <cstddef>
#include <ostream>
#include <span>

namespace dorvale::test {

/// Points that are also directions and ends, a transform, and a pair of tolerances.
struct KernelNumbers {
    double p[7][3] = {{3, 4, 0},  {1, 2, 5}, {0, 0, 1}, {13, 4, 0},
                      {3, -6, 0}, {2, 9, 0}, {6, 7, 0}};
    double m[4][4] = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {5, 6, 7, 1}};
    double tolDist = 0.01;
    double tolAng = 0.00026;
};
inline constexpr std::size_t kKernelNumbers = sizeof(KernelNumbers) / sizeof(double);

struct KernelInput : KernelNumbers {
    /// Coordinates of a point, 2 or 3.
    int n = 3;
    /// How many points a tessellation is asked for, 0 to 255.
    int count = 5;

    void setNumber(std::size_t i, double to);
};

/// A status, and all that a routine writes; what it leaves alone holds `kUntouched`.
struct KernelResult {
    static constexpr double kUntouched = -777.25;
    int status = 0;
    std::array<double, 32> out{};

    KernelResult() { out.fill(kUntouched); }
    /// The same bits, so that not-a-numbers can be equal.
    bool operator==(const KernelResult& other) const;
    bool wroteNothing() const;
};

struct KernelRoutine {
    const char* name = nullptr;
    int (*run)(const KernelInput&, double* out) = nullptr;

    KernelResult operator()(const KernelInput& input) const {
        KernelResult result;
        result.status = run(input, result.out.data());
        return result;
    }
    friend std::ostream& operator<<(std::ostream& out, const KernelRoutine& routine) {
        return out << routine.name;
    }
};
std::span<const KernelRoutine> kernelRoutines();

} // namespace dorvale::test
