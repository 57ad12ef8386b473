/// @file
/// What JavaScript calls. Where memory runs out, its own `outOfMemory` throws through the module,
/// which works on.

#include <cstdint>

#include "web/binding/build.h"
#include "web/binding/describe.h"
#include "web/binding/memory.h"
#include "web/binding/valuetext.h"

#define DORVALE_EXPORT(name) extern "C" __attribute__((visibility("default"), export_name(#name)))

namespace {

web::Input input;
/// Stands until the next call.
web::Words output;

void begin() {
    web::freeAll();
    output.clear();
}

} // namespace

/// Makes room for the next call's input.
DORVALE_EXPORT(reserve)
double* reserveInput(std::size_t numbers, std::size_t integers, std::size_t units) {
    return input.reserve(numbers, integers, units);
}

/// The table of calls: the number of words, then the words.
DORVALE_EXPORT(describe) const std::uint32_t* describeCalls() {
    begin();
    output.add(0);
    web::describeCalls(output);
    output.set(0, output.size());
    return output.data();
}

/// Builds so many annotations: the number of words, where each annotation starts, the annotations.
DORVALE_EXPORT(build) const std::uint32_t* buildAnnotations(std::size_t count) {
    begin();
    web::Recipes recipes(input);
    for (std::size_t i = 0; i < count + 1; ++i) {
        output.add(0);
    }
    for (std::size_t i = 0; i < count; ++i) {
        output.set(i + 1, output.size());
        web::build(recipes, output);
    }
    output.set(0, output.size());
    return output.data();
}

/// The value text that the input asks for: the number of words, and the text where there is one.
DORVALE_EXPORT(valueText) const std::uint32_t* valueText() {
    begin();
    output.add(0);
    if (const auto text = web::valueText(input)) {
        output.add(*text);
    }
    output.set(0, output.size());
    return output.data();
}
