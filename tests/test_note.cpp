// Notes.
#include "drawing.h"

namespace dorvale::test {
namespace {

/// A note at (10, 20, 5), with a leader from (30, 4, 5) and an extra line or with neither.
struct Note : Arguments {
    Note(std::vector<PMITextLine> given, double textHeight, bool withLeader) : Arguments({}) {
        noteLines = std::move(given);
        extraLine = withLeader ? L"more" : L"";
        height = textHeight;
        flags = withLeader ? 1 : 0;
        set(place, {30, 4, 5});
        set(text, {10, 20, 5});
        run("PMICreateNote3D", *this);
        EXPECT_EQ(pmi.GetComText().size(), 1U);
    }
    std::vector<Ank_Text*> texts() const { return pmi.GetComText().at(0)->GetTexts(); }
};

TEST(NoteTest, RunsDownwardsAndSkipsEmptyLines) {
    const Note note({{0, L"first"}, {1, L""}, {1, L"second"}, {2, L"third"}}, 5.0, true);
    const std::tuple<std::wstring, Vec, AnkTextTypeEnum> expected[] = {
        {L"first", {10, 20, 5}, ANK_TEXT_UNSET},
        {L"second", {10, 15, 5}, ANK_TEXT_NOTE_MARKED},
        {L"third", {10, 10, 5}, ANK_TEXT_UNSET},
        {L"more", {0, 0, 0}, ANK_TEXT_NOTE_EXTRA}};
    const std::vector<Ank_Text*> texts = note.texts();
    ASSERT_EQ(texts.size(), std::size(expected));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(
            std::tuple(texts[i]->GetText(), Vec(texts[i]->GetInnerLoc()), texts[i]->GetUsageType()),
            expected[i]);
        float size[2];
        texts[i]->GetCharWidthHeight(size[0], size[1]);
        EXPECT_EQ(size[0], 0.0F);
        EXPECT_EQ(size[1], 5.0F);
        EXPECT_EQ(texts[i]->GetCharSpacing(), 1.1F);
    }
    const Drawing drawing(note.pmi);
    ASSERT_EQ(drawing.leaders.size(), 1U);
    ExpectArrow(drawing.leaders[0], {30, 4, 5}, {10, 20, 5}, 1e-6);
}

TEST(NoteTest, SetsNothingButItsTextWithoutALeader) {
    for (const double height : {0.0, -1.0}) {
        const Note note({{0, L"text"}}, height, false);
        EXPECT_EQ(Drawing(note.pmi).text.numbers("size")[1], 14.0);
        EXPECT_TRUE(note.pmi.GetLeaders().empty());
        EXPECT_EQ(read(note.pmi).fields[0], read(Ank_PMI{}).fields[0]);
    }
}

TEST(NoteTest, AddsABlockEvenWithoutLines) {
    EXPECT_TRUE(Note({}, 5.0, false).texts().empty());
    EXPECT_TRUE(Note({{1, L""}}, 5.0, false).texts().empty());
}

} // namespace
} // namespace dorvale::test
