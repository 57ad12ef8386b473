// Any entry point or builder, with any arguments.
#include "robustness/calls.h"

#include <limits>

#include "target.h"

using namespace dorvale::test;

namespace {

constexpr std::size_t kMostCalls = 4;
/// Reading takes longer than building: one input in so many is read.
constexpr std::size_t kReadOneIn = 8;
constexpr std::size_t kMostPoints = 1001;

using Double = std::numeric_limits<double>;
constexpr double kSpecial[] = {Double::quiet_NaN(),
                               Double::infinity(),
                               -Double::infinity(),
                               1e308,
                               -1e308,
                               1e39,
                               1e19,
                               Double::denorm_min(),
                               Double::min(),
                               -0.0,
                               1e-46,
                               1e-11,
                               1e-5,
                               2147483648.0,
                               0.1,
                               3.36};

/// A special value, any bits, or a multiple of a quarter.
double readNumber(Input& input) {
    const std::uint8_t kind = input.byte();
    if (kind < std::size(kSpecial)) {
        return kSpecial[kind];
    }
    return kind == 255 ? input.take<double>() : input.take<std::int16_t>() * 0.25;
}

/// The record that an input asks for: a base, and what differs from it.
Record readRecord(std::size_t base, Input& input) {
    Record record = records()[base % records().size()];
    for (int edits = input.byte(); edits > 0 && !input.empty(); --edits) {
        const std::size_t place = input.byte();
        if (place < kNumbers) {
            record.setNumber(place, readNumber(input));
        } else if (place < kNumbers + kIntegers) {
            record.setInteger(place - kNumbers, input.take<std::int8_t>());
        } else if (place < 200) {
            record.setInteger(place % kIntegers, input.take<int>());
        } else {
            record.line = std::wstring(place - 200, static_cast<wchar_t>(input.byte()));
        }
    }
    return record;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::size_t choice = input.byte();
    Arguments arguments(readRecord(choice / kReadOneIn, input));
    for (std::size_t i = 0; i < kMostCalls && (i == 0 || !input.empty()); ++i) {
        const Call& call = calls()[input.byte() % calls().size()];
        call.prepare(arguments);
        call.run(arguments);
        require(arguments.pointsOut.size() <= kMostPoints * (i + 1));
    }
    require(choice % kReadOneIn != 0 || !arguments.read().empty());
    return 0;
}
