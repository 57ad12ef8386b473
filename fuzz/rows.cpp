// Calls of the host's table with any rows of numbers, integers and texts, however short: a caller
// of another language may hand over anything. Read back by what they hand back and measure.
#include <vector>

#include "host/calls/calls.h"
#include "host/calls/packed.h"

#include "target.h"

namespace {

/// What the numbers of an input stand for: small ones, or any bits.
double readNumber(Input& input) {
    const bool isPlain = input.take<std::uint8_t>() < 200;
    return isPlain ? input.take<std::int16_t>() * 0.25 : input.take<double>();
}

host::Row readRow(Input& input) {
    host::Row row;
    row.integers.resize(input.take<std::uint8_t>() % 32);
    for (int& integer : row.integers) {
        const auto small = input.take<std::int8_t>();
        integer = small == -128 ? input.take<int>() : small;
    }
    row.texts.resize(input.take<std::uint8_t>() % 4);
    for (std::wstring& text : row.texts) {
        text.assign(input.take<std::uint8_t>(), static_cast<wchar_t>(input.take<std::uint8_t>()));
    }
    row.numbers.resize(input.take<std::uint8_t>() % 64);
    for (double& number : row.numbers) {
        number = readNumber(input);
    }
    return row;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::vector<std::string> names = input.takeNames();
    const host::Row row = readRow(input);
    const host::Matrix view{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    host::Rows rest = row.rows();
    Ank_PMI pmi;
    for (const std::string& name : names) {
        const host::Call* call = host::findCall(name);
        if (call == nullptr) {
            return refused("no call " + name);
        }
        host::PackedArguments arguments(rest, view);
        host::CallResult result;
        call->make(arguments, pmi, result);
        require(rest.numbers.size() <= row.numbers.size() && result.others.size() <= 6);
    }
    return 0;
}
