// Every allocation of every entry point and builder fails in turn.
#include <iostream>
#include <new>

#include <gtest/gtest.h>

#include "robustness/allocator.h"
#include "robustness/calls.h"

namespace dorvale::test {

namespace {

struct Outcome {
    std::size_t failed = 0;
    bool threw = false;
};

/// Makes a call whose allocation `k` fails, counted from 0; with `forGood` all later ones too.
/// Anything but `std::bad_alloc` leaves it.
Outcome runFailing(const Call& call, Arguments& arguments, std::size_t k, bool forGood) {
    Outcome outcome;
    Allocator& state = allocator();
    state.failed = 0;
    state.forGood = forGood;
    state.left = k;
    try {
        call.run(arguments);
    } catch (const std::bad_alloc&) {
        outcome.threw = true;
    }
    state.left = Allocator::kNever;
    outcome.failed = state.failed;
    return outcome;
}

/// Whether there was an allocation `k` to fail.
bool failsInOrder(const Call& call, const Record& record, std::size_t k, bool forGood) {
    Arguments arguments(record);
    call.prepare(arguments);
    const Outcome outcome = runFailing(call, arguments, k, forGood);
    EXPECT_EQ(outcome.threw, outcome.failed > 0 && call.noMemory == 0);
    if (outcome.failed > 0 && call.noMemory != 0) {
        EXPECT_EQ(arguments.code, call.noMemory);
    }
    EXPECT_FALSE(outcome.failed > 0 && arguments.textOut);
    EXPECT_FALSE(arguments.read().empty());
    EXPECT_NO_THROW(call.run(arguments));
    EXPECT_FALSE(arguments.read().empty());
    return outcome.failed > 0;
}

TEST(Allocator, ServesTheLibraries) {
    const std::size_t before = allocator().bytes;
    Ank_Text().SetText(std::wstring(100, L' '));
    Ank_PolyLine().SetPoints(std::vector<ANK_PNT32>(100));
    EXPECT_GE(allocator().bytes - before, 2 * 100 * sizeof(ANK_PNT32) + 100 * sizeof(wchar_t));
}

class OutOfMemory : public testing::TestWithParam<Call> {};

TEST_P(OutOfMemory, IsReportedAndLeavesEverythingSound) {
    const Call& call = GetParam();
    std::size_t failures = 0;
    for (const Record& record : records()) {
        const Bits result = resultOf(call, record);
        for (const bool forGood : {false, true}) {
            for (std::size_t k = 0;; ++k) {
                SCOPED_TRACE("allocation " + std::to_string(k));
                const std::size_t live = allocator().live;
                const bool failed = failsInOrder(call, record, k, forGood);
                ASSERT_EQ(allocator().live, live);
                ASSERT_EQ(resultOf(call, record), result);
                if (!failed) {
                    break;
                }
                ++failures;
            }
        }
    }
    RecordProperty("allocationsFailed", std::to_string(failures));
    std::cout << call.name << ": " << failures << " allocations failed\n";
}

INSTANTIATE_TEST_SUITE_P(Every, OutOfMemory, testing::ValuesIn(calls().begin(), calls().end()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace

} // namespace dorvale::test
