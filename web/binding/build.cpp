#include "web/binding/build.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
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
    kOwnLabel = 32,
    kSpacing = 64
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

void readFinishing(Recipes& recipes, Finishing& read) {
    const int given = recipes.nextInteger();
    if (given == 0) {
        return;
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
    if ((given & kSpacing) != 0) {
        read.options.spacing = recipes.nextNumber();
    }
    read.ownLabel = (given & kOwnLabel) != 0;
}

void makeCalls(Recipes& recipes, Ank_PMI& pmi, std::vector<MadeCall>& made) {
    for (int left = recipes.nextInteger(); left > 0; --left) {
        const auto place = static_cast<std::size_t>(recipes.nextInteger());
        if (place >= host::calls().size()) {
            break;
        }
        host::PackedArguments arguments(recipes.rows(), recipes.view());
        host::CallResult& result = made.emplace_back(MadeCall{place, {}}).result;
        host::calls()[place].make(arguments, pmi, result);
    }
}

/// What becomes of one recipe.
struct Work {
    Ank_PMI pmi;
    Finishing finishing;
    std::vector<MadeCall> made;
};

struct Mistake {
    int line;
    std::string_view what;
};

template <class Check>
std::optional<Mistake> mistakeIn(const std::vector<std::wstring>& label, Check check) {
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (const std::optional<std::string_view> what = check(label[i])) {
            return Mistake{static_cast<int>(i), *what};
        }
    }
    return std::nullopt;
}

/// What the last call that measured something gave back; null where none did.
const host::CallResult* measuringCall(const std::vector<MadeCall>& made) {
    const auto found = std::find_if(made.rbegin(), made.rend(), [](const MadeCall& call) {
        return call.result.measured.quantity != host::Quantity::None;
    });
    return found == made.rend() ? nullptr : &found->result;
}

/// Finishes an annotation, unless its label cannot be.
std::optional<Mistake> finish(Work& work, const host::Matrix& view) {
    std::vector<std::wstring>& label = work.finishing.options.label;
    if (const auto mistake = mistakeIn(label, host::mistakeInLabel)) {
        return mistake;
    }
    const host::CallResult none;
    const host::CallResult* const measuring = measuringCall(work.made);
    const host::CallResult& call = measuring != nullptr ? *measuring : none;
    const auto misfit = mistakeIn(label, [&call](const std::wstring& line) {
        return host::misfitOfLabel(line, call.measured.quantity);
    });
    if (misfit && work.finishing.ownLabel) {
        return misfit;
    }
    if (misfit) {
        label.clear();
    }
    host::finish(work.pmi, view, work.finishing.options, call);
    return std::nullopt;
}

} // namespace

void build(Recipes& recipes, Words& words) {
    const Scope scope;
    const InScope<Work> work;
    preset(recipes, work->pmi);
    readFinishing(recipes, work->finishing);
    makeCalls(recipes, work->pmi, work->made);
    const std::optional<Mistake> mistake = finish(*work, recipes.view());
    words.add(mistake ? mistake->line : -1);
    if (mistake) {
        words.add(std::wstring(mistake->what.begin(), mistake->what.end()));
    } else {
        addAnnotation(words, work->pmi, work->made);
    }
}

} // namespace web
