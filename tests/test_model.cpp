// Who owns what in an annotation, and what comes back from it. Double deletion and leaks of what
// cannot be counted here are left to the sanitizers.
#include "support/annotation.h"

namespace dorvale::test {
namespace {

using testing::PrintToString;

class CountedLine : public Ank_Line {
public:
    explicit CountedLine(int& deleted) : deleted_(deleted) {}
    ~CountedLine() override { ++deleted_; }

private:
    int& deleted_;
};

void set(Ank_PMI& pmi, const std::vector<Ank_Leader*>& list) { pmi.SetLeaders(list); }
void set(Ank_PMI& pmi, const std::vector<Ank_Extensionline*>& list) { pmi.SetExLines(list); }
const auto& listOf(const Ank_PMI& pmi, const Ank_Leader* /*kind*/) { return pmi.GetLeaders(); }
const auto& listOf(const Ank_PMI& pmi, const Ank_Extensionline* /*kind*/) {
    return pmi.GetExLines();
}

/// Leaders and extension lines follow the same rules.
template <typename Element> class LineList : public testing::Test {
protected:
    Element* make() {
        auto* const element = new Element;
        element->SetCurve(new CountedLine(deleted));
        return element;
    }

    int deleted = 0;
    std::unique_ptr<Ank_PMI> pmi = std::make_unique<Ank_PMI>();
};

using LineElements = testing::Types<Ank_Leader, Ank_Extensionline>;
TYPED_TEST_SUITE(LineList, LineElements);

TYPED_TEST(LineList, KeepsWhatBothListsNameAndDeletesTheRestOnce) {
    TypeParam* const a = this->make();
    TypeParam* const b = this->make();
    TypeParam* const c = this->make();
    set(*this->pmi, std::vector{a});
    set(*this->pmi, std::vector{a, b});
    set(*this->pmi, std::vector{a, c, b, a});
    set(*this->pmi, listOf(*this->pmi, a));
    EXPECT_EQ(this->deleted, 0);
    EXPECT_EQ(listOf(*this->pmi, a), (std::vector{a, c, b, a}));
    set(*this->pmi, std::vector{b, b});
    EXPECT_EQ(this->deleted, 2);
    this->pmi.reset();
    EXPECT_EQ(this->deleted, 3);
}

TYPED_TEST(LineList, ElementDeletesTheCurveThatItReplaces) {
    TypeParam* const element = this->make();
    set(*this->pmi, std::vector{element});
    auto* const next = new CountedLine(this->deleted);
    element->SetCurve(next);
    EXPECT_EQ(this->deleted, 1);
    element->SetCurve(next);
    EXPECT_EQ(this->deleted, 1);
    element->SetCurve(nullptr);
    EXPECT_EQ(this->deleted, 2);
}

TEST(Model, SpecialLinesOwnEveryCurveAdded) {
    int deleted = 0;
    {
        Ank_SpecialLine line;
        line.AddCurve(new CountedLine(deleted));
        line.AddCurve(new CountedLine(deleted));
        EXPECT_EQ(line.GetCurves().size(), 2U);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(Model, TextBlocksKeepWhatTheyOwnAlready) {
    Ank_ComText block;
    auto* const first = new Ank_Text;
    auto* const second = new Ank_Text;
    block.SetTexts({first});
    block.SetTexts({second, first});
    EXPECT_EQ(block.GetTexts(), (std::vector{second, first}));
    first->SetText(L"still here");
    block.SetTexts({first});
    EXPECT_EQ(block.GetTexts().at(0)->GetText(), L"still here");
    auto* const envelope = new Ank_Envelope;
    block.SetEnvelope(new Ank_Envelope);
    block.SetEnvelope(envelope);
    block.SetEnvelope(envelope);
    EXPECT_EQ(block.GetEnvelope(), envelope);
}

TEST(Model, CurvesKeepWhatIsSet) {
    Ank_Ellipse arc;
    arc.SetUsageType(ANK_CURVE_USAGE_SPECIAL_LINE);
    arc.SetCurveDispType(ANK_CURVE_DISP_DIMENSION);
    arc.SetCurveDispStat(true);
    arc.SetCoordiantePnt({1, 2, 3}, {4, 5, 6});
    arc.SetCenterPoint({7, 8, 9});
    arc.SetNormal({10, 11, 12});
    arc.SetRadius(13, 14);
    arc.SetParameter(15, 16);
    arc.SetDomain(17, 18);
    arc.SetOriginDir({19, 20, 21});
    arc.SetXYZDir({22, 23, 24}, {25, 26, 27}, {28, 29, 30});
    const std::string expected =
        "curve 2 5 2 1, point 1 2 3, point 4 5 6, point 7 8 9, normal 10 11 12, radius 13 14, "
        "parameter 15 16, domain 17 18, axis 19 20 21, axis 22 23 24, axis 25 26 27, "
        "axis 28 29 30, ";
    EXPECT_EQ(PrintToString(read(arc)), expected);
    EXPECT_EQ(PrintToString(read(Ank_Ellipse(arc))), expected);
    Ank_PolyLine polyline;
    polyline.SetDomain(1, 2);
    EXPECT_EQ(PrintToString(read(polyline)), "curve 1 0 0 0, domain 1 2, ");
}

TEST(Model, TextCopiesTheNameOfItsFont) {
    Ank_Text text;
    wchar_t font[] = L"plain";
    text.SetFont(font);
    font[0] = L'P';
    EXPECT_EQ(text.GetFont(), L"plain");
    text.SetFont(nullptr);
    EXPECT_EQ(text.GetFont(), L"");
    text.SetFont(font);
    font[0] = L'\0';
    text.SetFont(font);
    EXPECT_EQ(text.GetFont(), L"");
}

} // namespace
} // namespace dorvale::test
