// Notes: lines of text with an optional leader.
#include "generators/assembly.h"
#include "model/values.h"

using namespace dorvale;

namespace {

constexpr double kNoteHeight = 14.0;
/// The character width is left to the font.
constexpr float kFontsOwnWidth = 0.0F;
constexpr float kNoteSpacing = 1.1F;
constexpr int kMarkedLine = 1;
/// An empty box: its corners stand the wrong way round.
ANK_BOX32 emptyBox() { return box32(point32(1.0F, 1.0F, 1.0F), point32(-1.0F, -1.0F, -1.0F)); }

/// A line of a note; without a location it stays at the model's default.
std::unique_ptr<Ank_Text> makeNoteText(std::wstring line, double height,
                                       const std::optional<ANK_PNT32>& location) {
    auto text = std::make_unique<Ank_Text>();
    text->SetText(std::move(line));
    text->SetCharWidthHeight(kFontsOwnWidth, static_cast<float>(height));
    text->SetCharSpacing(kNoteSpacing);
    if (location) {
        text->SetInnerLoc(*location);
    }
    text->SetInnerXYAxis(direction32(1.0F, 0.0F, 0.0F), direction32(0.0F, 1.0F, 0.0F));
    return text;
}

/// The lines run downwards from the location.
void addLines(PendingList<Ank_Text>& texts, const std::vector<PMITextLine>& lines,
              ANK_PNT32 location, double height) {
    for (const PMITextLine& line : lines) {
        if (line.text.empty()) {
            continue;
        }
        std::unique_ptr<Ank_Text> text = makeNoteText(line.text, height, location);
        if (line.kind == kMarkedLine) {
            text->SetUsageType(kMarkedNoteLine);
        }
        texts.add(std::move(text));
        location.y = static_cast<float>(location.y - height);
    }
}

} // namespace

void PMICreateNote3D(std::vector<PMITextLine>& lines, double* target, double* textPoint,
                     const int& /*unused*/, bool withLeader, std::wstring extraLine, double height,
                     Ank_PMI* pmi, int* /*status*/) {
    const double noteHeight = textHeightOr(height, kNoteHeight);
    const Vec3 location = fromArray(textPoint);
    PendingList<Ank_Text> texts(lines.size() + 1);
    addLines(texts, lines, toPoint32(location), noteHeight);
    if (!extraLine.empty()) {
        std::unique_ptr<Ank_Text> extra =
            makeNoteText(std::move(extraLine), noteHeight, std::nullopt);
        extra->SetUsageType(kExtraNoteLine);
        texts.add(std::move(extra));
    }
    if (withLeader) {
        Assembly assembly(*pmi);
        assembly.addLeader(fromArray(target), location);
        assembly.setLeaders();
    }
    auto block = std::make_unique<Ank_ComText>();
    // Two calls, both of which the host's annotation model sees; the box is the same.
    block->SetOuterBox(emptyBox());
    block->SetOuterBox(emptyBox());
    texts.handOver([&](const std::vector<Ank_Text*>& list) { block->SetTexts(list); });
    give(std::move(block), [&](Ank_ComText* taken) { pmi->AddComText(taken); });
}
