// Threads that build annotations of all kinds at once.
#include <latch>
#include <thread>

#include <gtest/gtest.h>

#include "support/calls.h"

namespace dorvale::test {

namespace {

constexpr std::size_t kThreads = 8;
constexpr std::size_t kRounds = 20;

/// Every call's result on a record, in order from call `first` on, and around.
std::vector<Bits> resultsFrom(std::size_t first, const Record& record) {
    std::vector<Bits> results(calls().size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        const std::size_t at = (first + i) % results.size();
        results[at] = resultOf(calls()[at], record);
    }
    return results;
}

TEST(Threads, BuildWhatOneThreadBuilds) {
    std::vector<std::vector<Bits>> expected;
    for (const Record& record : records()) {
        expected.push_back(resultsFrom(0, record));
    }
    std::latch start(kThreads);
    std::vector<std::size_t> different(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            start.arrive_and_wait();
            for (std::size_t round = 0; round < kRounds; ++round) {
                const std::size_t i = (round + t) % records().size();
                different[t] += resultsFrom(5 * t, records()[i]) == expected[i] ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(different, std::vector<std::size_t>(kThreads));
    RecordProperty("annotations", std::to_string(kThreads * kRounds * calls().size()));
}

} // namespace

} // namespace dorvale::test
