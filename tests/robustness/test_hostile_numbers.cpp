// Numbers that no host means to send: every call returns, in bounded memory, and what it built can
// be read.
#include <climits>
#include <random>

#include <gtest/gtest.h>

#include "robustness/allocator.h"
#include "support/calls.h"

namespace dorvale::test {

namespace {

constexpr int kHostileIntegers[] = {INT_MIN, -9, -1, 0, 1, 2, 3, 4, 5, 6, 7, 10, 11, INT_MAX};

/// Far more than any annotation takes.
constexpr std::size_t kMostBytes = 100000;

void expectSound(const Call& call, const Record& record) {
    Arguments arguments(record);
    call.prepare(arguments);
    const std::size_t before = allocator().bytes;
    call.run(arguments);
    EXPECT_LE(allocator().bytes - before, kMostBytes);
    // A second reading of the same, and a result that hangs on nothing but its arguments.
    EXPECT_EQ(arguments.bits(), resultOf(call, record));
}

class HostileNumbers : public testing::TestWithParam<Call> {};

TEST_P(HostileNumbers, OneAtATime) {
    for (std::size_t i = 0; i < kNumbers; ++i) {
        for (const double hostile : hostileNumbers()) {
            SCOPED_TRACE(testing::Message() << "number " << i << " is " << hostile);
            Record record;
            record.setNumber(i, hostile);
            expectSound(GetParam(), record);
        }
    }
    for (std::size_t i = 0; i < kIntegers; ++i) {
        for (const int hostile : kHostileIntegers) {
            SCOPED_TRACE(testing::Message() << "integer " << i << " is " << hostile);
            Record record;
            record.setInteger(i, hostile);
            expectSound(GetParam(), record);
        }
    }
}

TEST_P(HostileNumbers, Mixed) {
    std::mt19937 random(20);
    const auto below = [&random](std::size_t n) { return random() % n; };
    for (std::size_t round = 0; round < 300; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        Record record = records()[round % records().size()];
        const std::size_t oneIn = 1 + below(16);
        for (std::size_t i = 0; i < kNumbers; ++i) {
            if (below(oneIn) == 0) {
                record.setNumber(i, hostileNumbers()[below(hostileNumbers().size())]);
            }
        }
        record.setInteger(below(kIntegers), kHostileIntegers[below(std::size(kHostileIntegers))]);
        expectSound(GetParam(), record);
    }
}

INSTANTIATE_TEST_SUITE_P(HostileNumbers, HostileNumbers,
                         testing::ValuesIn(calls().begin(), calls().end()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace

} // namespace dorvale::test
