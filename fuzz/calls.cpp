// Any entry points and builders, one after the other on one annotation, with any arguments. An
// input begins with a line of their names.
#include "support/calls.h"

#include "target.h"

using namespace dorvale::test;

namespace {

/// Reading takes longer than building: one input in so many is read.
constexpr std::size_t kReadOneIn = 16;

/// A hostile number, any bits, or a multiple of a quarter.
double readNumber(Input& input) {
    const auto kind = input.take<std::uint8_t>();
    if (kind < hostileNumbers().size()) {
        return hostileNumbers()[kind];
    }
    return kind == 255 ? input.take<double>() : input.take<std::int16_t>() * 0.25;
}

/// A base, changed as the rest of the input says.
Record readRecord(std::size_t base, Input& input) {
    Record record = records()[base % records().size()];
    while (!input.empty()) {
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
    const std::vector<std::string> names = input.takeNames();
    const auto choice = input.take<std::uint8_t>();
    Arguments arguments(readRecord(choice / kReadOneIn, input));
    for (const std::string& name : names) {
        const Call* call = findCall(name);
        if (call == nullptr) {
            return refused("no call " + name);
        }
        call->prepare(arguments);
        call->run(arguments);
    }
    require(choice % kReadOneIn != 0 || !arguments.bits().empty());
    return 0;
}
