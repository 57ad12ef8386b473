// Notes.
#include <gtest/gtest.h>

#include "drawing.h"

namespace dorvale::test {
namespace {

std::unique_ptr<Ank_PMI> note(std::vector<PMITextLine> lines, double height, bool withLeader,
                              const std::wstring& extraLine = {}) {
    auto pmi = std::make_unique<Ank_PMI>();
    Vec target{30, 4, 5};
    Vec text{10, 20, 5};
    PMICreateNote3D(lines, &target.x, &text.x, 0, withLeader, extraLine, height, pmi.get(),
                    nullptr);
    EXPECT_EQ(pmi->GetComText().size(), 1U);
    return pmi;
}

TEST(NoteTest, RunsDownwardsAndSkipsEmptyLines) {
    const auto pmi =
        note({{0, L"first"}, {1, L""}, {1, L"second"}, {2, L"third"}}, 5.0, true, L"more");
    const std::vector<Ank_Text*> texts = pmi->GetComText()[0]->GetTexts();
    struct Line {
        std::wstring text;
        Vec at;
        AnkTextTypeEnum usage;
    };
    const Line expected[] = {{L"first", {10, 20, 5}, ANK_TEXT_UNSET},
                             {L"second", {10, 15, 5}, ANK_TEXT_NOTE_MARKED},
                             {L"third", {10, 10, 5}, ANK_TEXT_UNSET},
                             {L"more", {0, 0, 0}, ANK_TEXT_NOTE_EXTRA}};
    ASSERT_EQ(texts.size(), std::size(expected));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i]->GetText(), expected[i].text);
        ExpectVec3Near(texts[i]->GetInnerLoc(), expected[i].at, 0.0);
        EXPECT_EQ(texts[i]->GetUsageType(), expected[i].usage);
        float width = 1.0F;
        float height = 0.0F;
        texts[i]->GetCharWidthHeight(width, height);
        EXPECT_EQ(width, 0.0F);
        EXPECT_EQ(height, 5.0F);
        EXPECT_EQ(texts[i]->GetCharSpacing(), 1.1F);
    }
    const Drawing drawing(*pmi);
    ASSERT_EQ(drawing.leaders.size(), 1U);
    ExpectStroke(drawing.leaders[0], {30, 4, 5}, {10, 20, 5}, 0.0);
    ExpectArrow(drawing.leaders[0], 1e-6);
}

TEST(NoteTest, SetsNothingButItsTextWithoutALeader) {
    for (const double height : {0.0, -1.0}) {
        const auto pmi = note({{0, L"text"}}, height, false);
        EXPECT_EQ(Drawing(*pmi).text.height, 14.0F);
        EXPECT_TRUE(pmi->GetLeaders().empty());
        EXPECT_EQ(pmi->GetType(), ANK_PMI_UNSET);
        EXPECT_EQ(pmi->GetDim(), 0U);
        EXPECT_FALSE(pmi->GetDisplay() || pmi->GetParallelScreen());
    }
}

TEST(NoteTest, AddsABlockEvenWithoutLines) {
    EXPECT_TRUE(note({}, 5.0, false)->GetComText()[0]->GetTexts().empty());
    EXPECT_TRUE(note({{1, L""}}, 5.0, false)->GetComText()[0]->GetTexts().empty());
}

TEST(NoteTest, TakesAFrameAtTheTextAndSkipsABlockThatIsMissing) {
    const auto pmi = note({{0, L"text"}}, 5.0, true);
    pmi->AddComText(nullptr);
    Envelope envelope{true, 0, 0};
    PMISetEnvelope(1, true, true, true, envelope, pmi.get());
    AnkAnchorTypeEnum type{};
    ANK_PNT32 anchor;
    pmi->GetComText()[0]->GetEnvelope()->GetAnchorPoint(type, anchor);
    ExpectVec3Near(anchor, {10, 20, 5}, 0.0);
}

} // namespace
} // namespace dorvale::test
