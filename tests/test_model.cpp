// Who owns what in an annotation, and what comes back from it. Double deletion and leaks of what
// cannot be counted here are left to the sanitizers.
#include <sstream>

#include "support/annotation.h"

using namespace dorvale::test;

namespace {

class CountedLine : public Ank_Line {
public:
    explicit CountedLine(int& deleted) : deleted_(deleted) {}
    ~CountedLine() override { ++deleted_; }

private:
    int& deleted_;
};

template <typename Owner> Owner* ownerOf(Ank_CurveEntity* curve) {
    auto* owner = new Owner;
    owner->SetCurve(curve);
    return owner;
}

/// Leaders and extension lines follow the same rules.
template <typename Element> class LineList : public testing::Test {
protected:
    using List = std::vector<Element*>;

    Element* make() { return ownerOf<Element>(new CountedLine(deleted)); }
    void set(const List& list) {
        if constexpr (std::is_same_v<Element, Ank_Leader>) {
            pmi->SetLeaders(list);
        } else {
            pmi->SetExLines(list);
        }
    }
    const List& get() const {
        if constexpr (std::is_same_v<Element, Ank_Leader>) {
            return pmi->GetLeaders();
        } else {
            return pmi->GetExLines();
        }
    }

    int deleted = 0;
    std::unique_ptr<Ank_PMI> pmi = std::make_unique<Ank_PMI>();
};

using LineElements = testing::Types<Ank_Leader, Ank_Extensionline>;
TYPED_TEST_SUITE(LineList, LineElements);

TYPED_TEST(LineList, KeepsWhatBothListsNameAndDeletesTheRest) {
    TypeParam* const a = this->make();
    TypeParam* const b = this->make();
    TypeParam* const c = this->make();
    this->set({a});
    this->set({a, b});
    this->set({c, b, a});
    EXPECT_EQ(this->deleted, 0);
    EXPECT_EQ(this->get(), (std::vector{c, b, a}));
    this->set({b});
    EXPECT_EQ(this->deleted, 2);
    this->set({});
    EXPECT_EQ(this->deleted, 3);
}

TYPED_TEST(LineList, MayBeSetFromItself) {
    this->set({this->make(), this->make()});
    this->set(this->get());
    EXPECT_EQ(this->deleted, 0);
    EXPECT_EQ(this->get().size(), 2U);
    this->pmi.reset();
    EXPECT_EQ(this->deleted, 2);
}

TYPED_TEST(LineList, DeletesOnceWhatItNamesTwice) {
    TypeParam* const a = this->make();
    TypeParam* const b = this->make();
    this->set({a, a, b, b});
    this->set({b, b});
    EXPECT_EQ(this->deleted, 1);
    this->pmi.reset();
    EXPECT_EQ(this->deleted, 2);
}

TYPED_TEST(LineList, ElementDeletesTheCurveThatItReplaces) {
    TypeParam* const element = this->make();
    this->set({element});
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
        Ank_PMI pmi;
        auto* const line = new Ank_SpecialLine;
        pmi.AddSpecialLine(line);
        line->AddCurve(new CountedLine(deleted));
        line->AddCurve(new CountedLine(deleted));
        EXPECT_EQ(line->GetCurves().size(), 2U);
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
    block.SetTexts(block.GetTexts());
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

Ank_Ellipse* distinctArc() {
    auto* const arc = new Ank_Ellipse;
    arc->SetUsageType(ANK_CURVE_USAGE_SPECIAL_LINE);
    arc->SetCurveDispType(ANK_CURVE_DISP_DIMENSION);
    arc->SetCurveDispStat(true);
    arc->SetCenterPoint({1, 2, 3});
    arc->SetNormal({4, 5, 6});
    arc->SetOriginDir({7, 8, 9});
    arc->SetXYZDir({10, 11, 12}, {13, 14, 15}, {16, 17, 18});
    arc->SetRadius(19, 20);
    arc->SetParameter(21, 22);
    arc->SetDomain(23, 24);
    arc->SetCoordiantePnt({25, 26, 27}, {28, 29, 30});
    return arc;
}

TEST(Model, CopiedArcCarriesEverything) {
    const std::unique_ptr<Ank_Ellipse> arc(distinctArc());
    EXPECT_EQ(read(Ank_Ellipse(*arc)), read(*arc));
}

std::string printed(const Ank_PMI& pmi) {
    std::ostringstream out;
    out << read(pmi);
    return out.str();
}

TEST(Model, GettersGiveBackWhatWasSet) {
    Ank_PMI pmi;
    pmi.SetType(ANK_PMI_CLIP_ARC);
    pmi.SetDim(3);
    pmi.SetDisplay(true);
    pmi.SetDefPlane({{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}});

    auto* const text = new Ank_Text;
    wchar_t font[] = L"plain";
    text->SetText(L"12.5");
    text->SetFont(font);
    font[0] = L'P';
    text->SetCharWidthHeight(1, 2);
    text->SetCharSpacing(3);
    text->SetInnerLoc({4, 5, 6});
    text->SetInnerXYAxis({7, 8, 9}, {10, 11, 12});
    text->SetUsageType(ANK_TEXT_NOTE_MARKED);
    auto* const frame = new Ank_Envelope;
    frame->SetFrameFlag(true);
    frame->SetBackgroundColor({0.1F, 0.2F, 0.3F, 0.4F});
    frame->SetFrameColor({0.5F, 0.6F, 0.7F, 0.8F});
    frame->SetAnchorPoint(ANK_ANCHOR_LOCATION, {13, 14, 15});
    auto* const block = new Ank_ComText;
    block->SetTexts({text});
    block->SetOuterBox({{16, 17, 18}, {19, 20, 21}});
    block->SetEnvelope(frame);
    pmi.AddComText(block);

    auto* const polyline = new Ank_PolyLine;
    polyline->SetPoints({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    polyline->SetDomain(10, 11);
    auto* const leader = ownerOf<Ank_Leader>(polyline);
    leader->SetLeaderType(ANK_LEADER_ARC);
    float size[2] = {12, 13};
    leader->SetTerminator(ANK_TERM_ARROW, size, {14, 15, 16}, {17, 18, 19});
    leader->SetStubDelta(true);
    pmi.SetLeaders({leader, new Ank_Leader});

    auto* const segment = new Ank_Line;
    segment->SetStartPoint({1, 2, 3});
    segment->SetEndPoint({4, 5, 6});
    auto* const extension = ownerOf<Ank_Extensionline>(segment);
    extension->SetExLineType(ANK_EXTENSION_LINE);
    extension->SetDisplay(true);
    pmi.SetExLines({extension});

    auto* const special = new Ank_SpecialLine;
    special->AddCurve(distinctArc());
    pmi.AddSpecialLine(special);

    EXPECT_EQ(
        printed(pmi),
        "annotation 28 3 1 0, plane 1 2 3 4, plane 5 6 7 8, plane 9 10 11 12, plane 13 14 15 16, "
        "\n  block, box 16 17 18, box 19 20 21, frame 1 6, "
        "background 0.100000001 0.200000003 0.300000012 0.400000006, "
        "color 0.5 0.600000024 0.699999988 0.800000012, anchor 13 14 15, "
        "\n    text L\"12.5\", font L\"plain\", size 1 2 3, usage 26, at 4 5 6, x 7 8 9, "
        "y 10 11 12, "
        "\n  leader 2 1, terminator 4 12 13, at 14 15 16, along 17 18 19, curve 1 0 0 0, "
        "point 1 2 3, point 4 5 6, point 7 8 9, domain 10 11, "
        "\n  leader 0 0, terminator 0 0 0, at 0 0 0, along 0 0 0, "
        "\n  extension line 1 1, curve 3 0 0 0, point 1 2 3, point 4 5 6, domain 0 0, "
        "\n  special line -1, curve 2 5 2 1, point 25 26 27, point 28 29 30, point 1 2 3, "
        "radius 19 20, normal 4 5 6, parameter 21 22, originDir 7 8 9, axis 10 11 12, "
        "axis 13 14 15, axis 16 17 18, domain 23 24, ");
    EXPECT_EQ(printed(Ank_PMI{}), "annotation 0 0 0 0, plane 1 0 0 0, plane 0 1 0 0, "
                                  "plane 0 0 1 0, plane 0 0 0 1, ");
}

} // namespace
