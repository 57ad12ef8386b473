#include "builders/envelopes.h"

#include <optional>
#include <vector>

#include <dorvale/dorvale.h>

#include "builders/ownership.h"
#include "model/records.h"
#include "model/values.h"

namespace dorvale {

namespace {

ANK_RGBA32 colorOf(std::uint32_t word) {
    const auto channel = [word](unsigned shift) {
        return static_cast<float>(((word >> shift) & 0xFFU) / 255.0);
    };
    ANK_RGBA32 color{};
    color.r = channel(0);
    color.g = channel(8);
    color.b = channel(16);
    color.a = 0.0F;
    return color;
}

/// The far end of a leader's first curve: the last point of a polyline, the end of an arc.
std::optional<ANK_PNT32> farEndOf(const Ank_Leader& leader) {
    const std::vector<Ank_CurveEntity*> curves = leader.GetAllCurve();
    const Ank_CurveEntity* curve = curves.empty() ? nullptr : curves.front();
    if (curve == nullptr) {
        return std::nullopt;
    }
    if (curve->GetCurveType() == kPolylineCurve) {
        const auto& points = static_cast<const Ank_PolyLine*>(curve)->GetPoints();
        return points.size() < 2 ? std::nullopt : std::optional(points.back());
    }
    if (curve->GetCurveType() == kArcCurve) {
        ANK_PNT32 start{};
        ANK_PNT32 end{};
        static_cast<const Ank_Ellipse*>(curve)->GetCoordinatePnt(start, end);
        return end;
    }
    return std::nullopt;
}

} // namespace

void addFrame(Ank_ComText& block, const FrameStyle& style, const ANK_PNT32& anchor) {
    auto envelope = std::make_unique<Ank_Envelope>();
    envelope->SetFrameFlag(style.drawn);
    envelope->SetBackgroundColor(colorOf(style.background));
    envelope->SetFrameColor(colorOf(style.frame));
    envelope->SetAnchorPoint(kAnchoredAtLocation, anchor);
    give(std::move(envelope), [&](Ank_Envelope* taken) { block.SetEnvelope(taken); });
}

void frameFirstBlock(const Ank_PMI& pmi, const FrameStyle& style) {
    const std::vector<Ank_ComText*>& blocks = pmi.GetComText();
    if (blocks.empty() || blocks.front() == nullptr) {
        return;
    }
    const std::vector<Ank_Text*> texts = blocks.front()->GetTexts();
    if (texts.empty() || texts.front() == nullptr) {
        return;
    }
    addFrame(*blocks.front(), style, texts.front()->GetInnerLoc());
}

} // namespace dorvale

void PMISetEnvelope(int mode, bool apply, bool stub, bool withEnvelope, Envelope& envelope,
                    Ank_PMI* pmi) {
    using namespace dorvale;
    if (mode != 1 || !apply || pmi == nullptr) {
        return;
    }
    ANK_PNT32 anchor = point32(0.0F, 0.0F, 0.0F);
    const std::vector<Ank_Leader*>& leaders = pmi->GetLeaders();
    if (!leaders.empty()) {
        const std::optional<ANK_PNT32> farEnd =
            leaders.front() == nullptr ? std::nullopt : farEndOf(*leaders.front());
        if (!farEnd) {
            return;
        }
        anchor = *farEnd;
        leaders.front()->SetStubDelta(stub);
    }
    if (!withEnvelope) {
        return;
    }
    const FrameStyle style{envelope.frameFlag, envelope.backgroundColour, envelope.frameColour};
    for (Ank_ComText* block : pmi->GetComText()) {
        if (block != nullptr) {
            addFrame(*block, style, anchor);
        }
    }
}
