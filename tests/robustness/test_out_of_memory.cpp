// Every allocation of every entry point and builder fails in turn.
#include <iostream>
#include <new>

#include <gtest/gtest.h>

#include "robustness/allocator.h"
#include "support/calls.h"

namespace dorvale::test {

namespace {

/// Makes a call whose allocation `k` fails, counted from 0; with `forGood` all later ones too.
/// Whether it throws `std::bad_alloc`; anything else leaves it.
bool throwsFailing(const Call& call, Arguments& arguments, std::size_t k, bool forGood) {
    Allocator& state = allocator();
    state.failed = 0;
    state.forGood = forGood;
    state.left = k;
    bool threw = false;
    try {
        call.run(arguments);
    } catch (const std::bad_alloc&) {
        threw = true;
    }
    state.left = Allocator::kNever;
    return threw;
}

/// Whether there was an allocation `k` to fail.
bool failsInOrder(const Call& call, const Record& record, std::size_t k, bool forGood) {
    Arguments arguments(record);
    call.prepare(arguments);
    const bool threw = throwsFailing(call, arguments, k, forGood);
    const bool failed = allocator().failed > 0;
    EXPECT_EQ(threw, failed && call.noMemory == 0);
    EXPECT_TRUE(!failed || call.noMemory == 0 || arguments.code == call.noMemory);
    EXPECT_FALSE(failed && arguments.textOut);
    EXPECT_FALSE(arguments.bits().empty());
    EXPECT_NO_THROW(call.run(arguments));
    EXPECT_FALSE(arguments.bits().empty());
    return failed;
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

INSTANTIATE_TEST_SUITE_P(OutOfMemory, OutOfMemory,
                         testing::ValuesIn(calls().begin(), calls().end()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace

} // namespace dorvale::test
