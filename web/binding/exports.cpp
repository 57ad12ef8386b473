/// @file
/// What JavaScript calls. A pointer that is null says that memory has run out; the module then has
/// given back what it held and works on.

#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "web/binding/describe.h"
#include "web/binding/recipes.h"
#include "web/binding/results.h"
#include "web/binding/valuetext.h"

#define DORVALE_EXPORT(name) extern "C" __attribute__((visibility("default"), export_name(#name)))

namespace web {
namespace {

Input input;
Words output;

/// What the viewer sets before the first call.
enum Preset { kType = 1, kDisplay = 2, kScreenParallel = 4 };

void preset(Recipes& recipes, Ank_PMI& pmi) {
    const int given = recipes.nextInteger();
    if ((given & kType) != 0) {
        pmi.SetType(static_cast<AnkPMITypeEnum>(recipes.nextInteger()));
    }
    if ((given & kDisplay) != 0) {
        pmi.SetDisplay(recipes.nextInteger() != 0);
    }
    if ((given & kScreenParallel) != 0) {
        pmi.SetParallelScreen(recipes.nextInteger() != 0);
    }
}

void build(Recipes& recipes) {
    Ank_PMI pmi;
    preset(recipes, pmi);
    std::vector<host::CallResult> results;
    for (int left = recipes.nextInteger(); left > 0; --left) {
        const auto index = static_cast<std::size_t>(recipes.nextInteger());
        if (index >= host::calls().size()) {
            break;
        }
        const host::Call& call = host::calls()[index];
        host::PackedArguments arguments(recipes.rows(), recipes.view());
        host::CallResult& result = results.emplace_back();
        result.call = call.name;
        call.make(arguments, pmi, result);
    }
    addAnnotation(output, pmi, results);
}

template <class Work> auto unlessMemoryRunsOut(const Work& work) -> decltype(work()) {
    try {
        return work();
    } catch (...) {
        input.release();
        output = {};
        return nullptr;
    }
}

} // namespace
} // namespace web

/// JSON in UTF-16, its length in front; kept by the module.
DORVALE_EXPORT(describe) const std::uint32_t* describeCalls() {
    return web::unlessMemoryRunsOut([] {
        web::output.clear();
        web::output.add(web::describeCalls());
        return web::output.data();
    });
}

DORVALE_EXPORT(reserve)
double* reserveInput(std::size_t numbers, std::size_t integers, std::size_t units) {
    return web::unlessMemoryRunsOut(
        [=] { return web::input.reserve(numbers, integers, units); });
}

/// Builds annotations from the input. The result stands until the next call: the number of its
/// words, where each annotation starts, and the annotations.
DORVALE_EXPORT(build) const std::uint32_t* buildAnnotations(std::size_t count) {
    return web::unlessMemoryRunsOut([count] {
        web::Recipes recipes(web::input);
        web::output.clear();
        for (std::size_t i = 0; i < count + 1; ++i) {
            web::output.add(0);
        }
        for (std::size_t i = 0; i < count; ++i) {
            web::output.set(i + 1, web::output.size());
            web::build(recipes);
        }
        web::output.set(0, web::output.size());
        return web::output.data();
    });
}

/// The text of the input's first number: of a length, of an angle, or in the format of six integers.
/// The result stands until the next call: its length, or -1 where there is none, and its units.
DORVALE_EXPORT(valueText) const std::uint32_t* valueText() {
    return web::unlessMemoryRunsOut([] {
        web::output.clear();
        const std::optional<std::wstring> text = web::valueText(web::input);
        if (text) {
            web::output.add(*text);
        } else {
            web::output.add(-1);
        }
        return web::output.data();
    });
}
