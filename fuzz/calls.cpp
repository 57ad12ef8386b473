// Any entry point or builder, with any arguments.
#include "robustness/calls.h"

#include "target.h"

using namespace dorvale::test;

namespace {

constexpr std::size_t kMostCalls = 4;
/// Reading takes longer than building: one input in so many is read.
constexpr std::size_t kReadOneIn = 8;
constexpr std::size_t kMostPoints = 1001;

/// A hostile number, any bits, or a multiple of a quarter.
double readNumber(Input& input) {
    const auto kind = input.take<std::uint8_t>();
    if (kind < hostileNumbers().size()) {
        return hostileNumbers()[kind];
    }
    return kind == 255 ? input.take<double>() : input.take<std::int16_t>() * 0.25;
}

/// The record that an input asks for: a base, and what differs from it.
Record readRecord(std::size_t base, Input& input) {
    Record record = records()[base % records().size()];
    for (int edits = input.take<std::uint8_t>(); edits > 0 && !input.empty(); --edits) {
        const std::size_t place = input.take<std::uint8_t>();
        if (place < kNumbers) {
            record.setNumber(place, readNumber(input));
        } else if (place < kNumbers + kIntegers) {
            record.setInteger(place - kNumbers, input.take<std::int8_t>());
        } else if (place < 200) {
            record.setInteger(place % kIntegers, input.take<int>());
        } else {
            record.line =
                std::wstring(place - 200, static_cast<wchar_t>(input.take<std::uint8_t>()));
        }
    }
    return record;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::size_t choice = input.take<std::uint8_t>();
    Arguments arguments(readRecord(choice / kReadOneIn, input));
    for (std::size_t i = 0; i < kMostCalls && (i == 0 || !input.empty()); ++i) {
        const Call& call = calls()[input.take<std::uint8_t>() % calls().size()];
        call.prepare(arguments);
        call.run(arguments);
        require(arguments.pointsOut.size() <= kMostPoints * (i + 1));
    }
    require(choice % kReadOneIn != 0 || !arguments.read().empty());
    return 0;
}
