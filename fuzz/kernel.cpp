// Any numerical routine, with any numbers.
#include "robustness/kernelroutines.h"
#include "support/calls.h"

#include "target.h"

using namespace dorvale::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const KernelRoutine& routine =
        kernelRoutines()[input.take<std::uint8_t>() % kernelRoutines().size()];
    KernelInput numbers;
    numbers.n = 2 + input.take<std::uint8_t>() % 2;
    numbers.count = input.take<std::uint8_t>();
    while (!input.empty()) {
        const std::size_t place = input.take<std::uint8_t>() % kKernelNumbers;
        // A hostile number, or any bits.
        const std::size_t kind = input.take<std::uint8_t>();
        numbers.setNumber(place, kind < hostileNumbers().size() ? hostileNumbers()[kind]
                                                                : input.take<double>());
    }
    const KernelResult result = routine(numbers);
    require(result == routine(numbers));
    require(result.wroteNothing() == (result.status != 0));
    return 0;
}
