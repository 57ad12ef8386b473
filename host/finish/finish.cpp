#include "host/finish/finish.h"

#include <algorithm>
#include <cmath>

#include "host/finish/arrows.h"
#include "host/finish/block.h"
#include "host/finish/gap.h"
#include "host/finish/label.h"

namespace host {
namespace {

/// Of an annotation without text: the height that the library takes where it is given none.
constexpr double kDefaultTextHeight = 3.5;

/// The block that the last call wrote.
std::optional<TextBlock> valueBlock(const Ank_PMI& pmi, const ViewInPlane& view) {
    const std::vector<Ank_ComText*>& blocks = pmi.GetComText();
    for (std::size_t i = blocks.size(); i-- > 0;) {
        const std::vector<TextBlock> texts =
            TextBlock::in(*blocks[i], pmi.GetParallelScreen(), view);
        if (!texts.empty() && !texts.front().isExtraLine()) {
            return texts.front();
        }
    }
    return std::nullopt;
}

void writeLabel(TextBlock& block, const std::vector<std::wstring>& label,
                const Measured& measured) {
    const std::wstring written = block.text();
    std::vector<std::wstring> lines;
    std::transform(label.begin(), label.end(), std::back_inserter(lines),
                   [&](const std::wstring& line) { return filledLabel(line, measured, written); });
    block.setLines(lines);
}

void makeReadable(const Ank_PMI& pmi, const ViewInPlane& view) {
    for (Ank_ComText* block : pmi.GetComText()) {
        for (TextBlock& texts : TextBlock::in(*block, pmi.GetParallelScreen(), view)) {
            texts.makeReadable(view);
        }
    }
}

void setSpacing(const Ank_PMI& pmi, double spacing) {
    for (const Ank_ComText* block : pmi.GetComText()) {
        for (Ank_Text* text : block->GetTexts()) {
            text->SetCharSpacing(static_cast<float>(spacing));
        }
    }
}

void finishText(Ank_PMI& pmi, const ViewInPlane& view, const FinishOptions& options,
                const CallResult& call) {
    const bool readable = options.readable.value_or(false);
    if (options.spacing) {
        setSpacing(pmi, *options.spacing);
    }
    std::optional<TextBlock> block = valueBlock(pmi, view);
    if (block) {
        const double middle = block->estimatedMiddle();
        if (!options.label.empty() && std::isfinite(call.measured.value)) {
            writeLabel(*block, options.label, call.measured);
        }
        if (call.centersText) {
            block->centerOn(middle);
        }
    }
    if (readable) {
        makeReadable(pmi, view);
        block = valueBlock(pmi, view);
    }
    if (!block) {
        return;
    }
    if (options.gap) {
        if (const auto way = moveOffLeaders(pmi, *block, *options.gap, call.centersText)) {
            block->moveBy(*way);
        }
    }
    block->fitBox();
}

double textHeightOf(const Ank_PMI& pmi, const std::optional<ViewInPlane>& view) {
    const std::optional<TextBlock> block = view ? valueBlock(pmi, *view) : std::nullopt;
    return block ? block->textHeight() : kDefaultTextHeight;
}

} // namespace

void finish(Ank_PMI& pmi, const Matrix& view, const FinishOptions& options,
            const CallResult& call) {
    if (options.empty()) {
        return;
    }
    const std::optional<ViewInPlane> axes = viewInPlane(pmi, view);
    if (options.arrow) {
        setArrows(pmi, options.arrow->fits ? fittingArrow(pmi, textHeightOf(pmi, axes))
                                           : options.arrow->length);
    }
    if (axes) {
        finishText(pmi, *axes, options, call);
    }
}

} // namespace host
