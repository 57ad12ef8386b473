// Numbers that no one means to compute with: every numerical routine returns, gives the same again,
// and writes nothing where it has no result.
#include <random>

#include <gtest/gtest.h>

#include "robustness/kernelroutines.h"
#include "support/calls.h"

namespace dorvale::test {

namespace {

void expectSound(const KernelRoutine& routine, const KernelInput& input) {
    const KernelResult result = routine(input);
    EXPECT_EQ(result, routine(input));
    EXPECT_EQ(result.wroteNothing(), result.status != 0);
}

class HostileKernel : public testing::TestWithParam<KernelRoutine> {};

TEST_P(HostileKernel, OneAtATime) {
    for (std::size_t i = 0; i < kKernelNumbers; ++i) {
        for (const double hostile : hostileNumbers()) {
            SCOPED_TRACE(testing::Message() << "number " << i << " is " << hostile);
            KernelInput input;
            input.setNumber(i, hostile);
            expectSound(GetParam(), input);
            input.n = 2;
            input.count = 0;
            expectSound(GetParam(), input);
        }
    }
}

TEST_P(HostileKernel, Mixed) {
    std::mt19937 random(21);
    const auto below = [&random](std::size_t n) { return random() % n; };
    for (std::size_t round = 0; round < 3000; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        KernelInput input;
        const std::size_t oneIn = 1 + below(16);
        for (std::size_t i = 0; i < kKernelNumbers; ++i) {
            if (below(oneIn) == 0) {
                input.setNumber(i, hostileNumbers()[below(hostileNumbers().size())]);
            }
        }
        input.n = 2 + static_cast<int>(below(2));
        input.count = static_cast<int>(below(3));
        expectSound(GetParam(), input);
    }
}

INSTANTIATE_TEST_SUITE_P(HostileKernel, HostileKernel,
                         testing::ValuesIn(kernelRoutines().begin(), kernelRoutines().end()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace

} // namespace dorvale::test
