#include "web/binding/build.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "host/finish/finish.h"
#include "host/finish/label.h"

namespace web {
namespace {

enum Preset { kType = 1, kDisplay = 2, kScreenParallel = 4 };

enum Finish {
    kArrowFits = 1,
    kArrowLength = 2,
    kGap = 4,
    kReadable = 8,
    kNotReadable = 16,
    /// The label is the annotation's own, and not one that a scene has for all that can show it.
    kOwnLabel = 32
};

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

struct Finishing {
    host::FinishOptions options;
    bool ownLabel = false;
};

Finishing readFinishing(Recipes& recipes) {
    Finishing read;
    const int given = recipes.nextInteger();
    if (given == 0) {
        return read;
    }
    for (int left = recipes.nextInteger(); left > 0 && !recipes.rows().texts.empty(); --left) {
        read.options.label.push_back(recipes.nextText());
    }
    if ((given & (kArrowFits | kArrowLength)) != 0) {
        const bool fits = (given & kArrowFits) != 0;
        read.options.arrow = host::ArrowLength{fits, fits ? 0 : recipes.nextNumber()};
    }
    if ((given & kGap) != 0) {
        read.options.gap = recipes.nextNumber();
    }
    if ((given & (kReadable | kNotReadable)) != 0) {
        read.options.readable = (given & kReadable) != 0;
    }
    read.ownLabel = (given & kOwnLabel) != 0;
    return read;
}

using CallResults = std::vector<host::CallResult>;

CallResults makeCalls(Recipes& recipes, Ank_PMI& pmi) {
    CallResults results;
    for (int left = recipes.nextInteger(); left > 0; --left) {
        const auto place = static_cast<std::size_t>(recipes.nextInteger());
        if (place >= host::calls().size()) {
            break;
        }
        const host::Call& call = host::calls()[place];
        host::PackedArguments arguments(recipes.rows(), recipes.view());
        host::CallResult& result = results.emplace_back();
        result.call = call.name;
        call.make(arguments, pmi, result);
    }
    return results;
}

struct Mistake {
    int line;
    std::string what;
};

template <class Check>
std::optional<Mistake> mistakeIn(const std::vector<std::wstring>& label, Check check) {
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (const std::optional<std::string> what = check(label[i])) {
            return Mistake{static_cast<int>(i), *what};
        }
    }
    return std::nullopt;
}

/// The last call that measured something; an empty one where none did.
host::CallResult measuringCall(const CallResults& results) {
    const auto found = std::find_if(results.rbegin(), results.rend(), [](const auto& result) {
        return result.measured.quantity != host::Quantity::None;
    });
    return found == results.rend() ? host::CallResult{} : *found;
}

/// Finishes an annotation, unless its label cannot be.
std::optional<Mistake> finish(Finishing& finishing, const CallResults& results,
                              const host::Matrix& view, Ank_PMI& pmi) {
    std::vector<std::wstring>& label = finishing.options.label;
    if (const auto mistake = mistakeIn(label, host::mistakeInLabel)) {
        return mistake;
    }
    const host::CallResult call = measuringCall(results);
    const auto misfit = mistakeIn(label, [&call](const std::wstring& line) {
        return host::misfitOfLabel(line, call.measured.quantity);
    });
    if (misfit && finishing.ownLabel) {
        return misfit;
    }
    if (misfit) {
        label.clear();
    }
    host::finish(pmi, view, finishing.options, call);
    return std::nullopt;
}

} // namespace

void build(Recipes& recipes, Words& words) {
    const Scope scope;
    Ank_PMI pmi;
    preset(recipes, pmi);
    Finishing finishing = readFinishing(recipes);
    const CallResults results = makeCalls(recipes, pmi);
    const std::optional<Mistake> mistake = finish(finishing, results, recipes.view(), pmi);
    words.add(mistake ? mistake->line : -1);
    if (mistake) {
        words.add(std::wstring(mistake->what.begin(), mistake->what.end()));
    } else {
        addAnnotation(words, pmi, results);
    }
}

} // namespace web
