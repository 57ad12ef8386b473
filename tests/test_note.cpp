// Notes and updates.
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
    const Drawing drawing(*pmi, {});
    ASSERT_EQ(drawing.leaders.size(), 1U);
    ExpectStroke(drawing.leaders[0], {30, 4, 5}, {10, 20, 5}, 0.0);
    ExpectArrow(drawing.leaders[0], 1e-6);
}

TEST(NoteTest, SetsNothingButItsTextWithoutALeader) {
    for (const double height : {0.0, -1.0}) {
        const auto pmi = note({{0, L"text"}}, height, false);
        EXPECT_EQ(Drawing(*pmi, {}).text.height, 14.0F);
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

/// Two updates: two texts, and the leaders of the second.
std::unique_ptr<Ank_PMI> updatedTwice() {
    auto pmi = std::make_unique<Ank_PMI>();
    int status = 7;
    Vec p1;
    Vec p2{10, 0, 0};
    PMIUpdateDimesion(pmi.get(), &p1.x, &p2.x, nullptr, &status);
    p2 = {0, 24, 0};
    PMIUpdateDimesion(pmi.get(), &p1.x, &p2.x, nullptr, &status);
    EXPECT_EQ(status, 0);
    return pmi;
}

TEST(UpdateTest, AddsATextAndReplacesTheLeaders) {
    const auto pmi = updatedTwice();
    const Drawing drawing(*pmi, {});
    ASSERT_EQ(drawing.leaders.size(), 2U);
    ExpectStroke(drawing.leaders[0], {0, 0, 0}, {0, 12, 0}, 0.0);
    ExpectStroke(drawing.leaders[1], {0, 24, 0}, {0, 12, 0}, 0.0);
    ExpectArrow(drawing.leaders[1], 1e-6);
    ASSERT_EQ(pmi->GetComText().size(), 2U);
    EXPECT_EQ(drawing.text.line, L"10.00");
    ExpectVec3Near(drawing.text.at, {5, 0, 0}, 0.0);
    EXPECT_EQ(drawing.text.height, 3.5F);
    EXPECT_EQ(valueText(*pmi), L"24.00");
}

TEST(UpdateTest, KeepsTheLeadersWherePointsCoincide) {
    const auto pmi = updatedTwice();
    int status = 7;
    Vec p{1, 2, 3};
    PMIUpdateDimesion(pmi.get(), &p.x, &p.x, nullptr, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(valueText(*pmi), L"0.00");
    ExpectVec3Near(leaderPoints(*pmi, 1)[0], {0, 24, 0}, 0.0);
}

} // namespace
} // namespace dorvale::test
