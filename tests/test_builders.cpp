// The element builders, called as a host may call them.
#include <set>

#include "drawing.h"
#include "support/members.h"

namespace dorvale::test {
namespace {

using Points = std::vector<ANK_PNT32>;
using testing::PrintToString;

/// Takes every element that a builder makes, so that all of it can be read and nothing leaks.
struct Taken : Arguments {
    Taken() : Arguments({}) {}
    /// The record of all that has been built.
    std::string record() {
        gather();
        const std::string whole = PrintToString(read(built));
        return whole.substr(PrintToString(read(pmi)).size());
    }
};

TEST(Builder, LeaderCarriesItsTerminatorPointEvenWithoutArrow) {
    Taken made;
    Points points{{0, 0, 0}, {0, 0, 10}, {3, 4, 5}};
    const auto given = static_cast<AnkTermTypeEnum>(9);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {9, 9, 9}, made.leaders, true, false), 0);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {9, 9, 9}, made.leaders, false, true), 0);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(given, points, {1, 1, 1}, made.leaders, true), 0);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(given, points, {1, 1, 1}, made.leaders, false), 0);
    const std::string curve = "along 0 0 1, curve 1 1 0 1, point 0 0 0, point 0 0 10, "
                              "point 3 4 5, domain 0 0, ";
    const std::string size = " 3.3599999 1.12, ";
    EXPECT_EQ(made.record(), "\nleader 1 0, head 4" + size + "at 9 9 9, " + curve +
                                 "\nleader 1 1, head 0" + size + "at 9 9 9, " + curve +
                                 "\nleader 1 0, head 9" + size + "at 1 1 1, " + curve +
                                 "\nleader 1 0, head 0" + size + "at 1 1 1, " + curve);
}

TEST(Builder, RefusesWhatMakesNoPolyline) {
    Taken made;
    for (Points points : {Points{}, Points{{1, 2, 3}}, Points{{1, 2, 3}, {1, 2, 3}}}) {
        EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {}, made.leaders, true, true), -1);
        EXPECT_EQ(CDimSymUitity::FillLeaderData(ANK_TERM_ARROW, points, {}, made.leaders, true),
                  -1);
        EXPECT_EQ(CDimSymUitity::FillSpecLinData(points), nullptr);
        Ank_CurveEntity* curve = &made.arc;
        Members::polyLinFun(points, &curve);
        EXPECT_EQ(curve, &made.arc);
    }
    EXPECT_EQ(made.record(), "");
    Points closed{{0, 0, 0}, {5, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(CDimSymUitity::FillLeaderData(closed, {}, made.leaders, true, false), 0);
}

TEST(Builder, CurvesOfAPointList) {
    const auto converted = [](Points points, AnkCurveTypeEnum type) {
        Ank_CurveEntity* curve = nullptr;
        Members::ConvertToAnkCurve(points, type, &curve);
        const std::unique_ptr<Ank_CurveEntity> owned(curve);
        return curve == nullptr ? "" : PrintToString(read(*curve));
    };
    const Points points{{1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    EXPECT_EQ(converted(points, ANK_CURVE_LINE), "curve 3 0 0 0, point 1 0 0, point 2 0 0, ");
    EXPECT_EQ(converted(points, ANK_CURVE_POLYLINE),
              "curve 1 0 0 0, point 1 0 0, point 2 0 0, point 3 0 0, domain 0 0, ");
    EXPECT_EQ(converted(points, ANK_CURVE_ARC), "");
    EXPECT_EQ(converted({{1, 0, 0}}, ANK_CURVE_LINE), "");
}

TEST(Builder, ArcTakesAGivenNormalUnlessItsComponentsAddUpToNothing) {
    const struct {
        Vec given;
        int isGiven = 0;
        Vec used;
    } cases[] = {{{0, 0, -1}, 1, {0, 0, -1}},
                 {{0, 0, 5}, 1, {0, 0, 5}},
                 {{0, 0, 0}, 1, {0, 0, 1}},
                 {{1, -1, 0}, 1, {0, 0, 1}},
                 {{0, 0, -1}, 0, {0, 0, 1}}};
    for (const char* call : {"FillLeaderData_Arc", "ConvertToAnkCurve_Arc"}) {
        for (const auto& c : cases) {
            Record record;
            set(record.points[0], {1, 1, 2});
            set(record.points[1], {4, 1, 2});
            set(record.points[3], {1, 4, 2});
            set(record.normal, c.given);
            record.flags = c.isGiven;
            Arguments made(record);
            run(call, made);
            made.gather();
            EXPECT_EQ(Drawing(made.built).leaders.at(0).vec("normal"), c.used);
            EXPECT_EQ(Vec(made.normal), c.isGiven != 0 ? c.used : c.given);
        }
    }
}

TEST(Builder, ArcArrowsStopAtAnEmptyArc) {
    Taken made;
    Points points{{0, 0, 0}, {1, 0, 0}};
    CDimSymUitity::FillLeaderData(points, {}, made.leaders, false, false);
    made.leaders.push_back(new Ank_Leader);
    for (const double end : {1.0, 0.0, 1.0}) {
        CDimSymUitity::FillLeaderData({}, {10, 0, 0}, (towards(end) * 10.0).point32(), 10.0F,
                                      made.leaders, made.normal);
    }
    CDimSymUitity::SetTerminator(made.leaders);
    made.gather();
    std::vector<int> heads;
    for (const Element& leader : Drawing(made.built).leaders) {
        heads.push_back(headOf(leader));
    }
    EXPECT_EQ(heads, (std::vector<int>{0, 0, ANK_TERM_ARROW, 0, 0}));
    const Element arrow = Drawing(made.built).leaders[2];
    EXPECT_EQ(arrow.numbers("leader"), (std::vector{2.0, 0.0}));
    EXPECT_EQ(arrow.numbers("curve"), (std::vector{2.0, 1.0, 2.0, 1.0}));
}

TEST(Builder, ExtensionAndSpecialLines) {
    Taken made;
    Points none;
    Points pair{{0, 0, 0}, {5, 0, 0}};
    CDimSymUitity::FillExlineData(none, made.exLines, true);
    CDimSymUitity::FillExlineData(pair, made.exLines, ANK_CURVE_DISP_SPECIAL_LINE, false);
    made.built.AddSpecialLine(CDimSymUitity::FillSpecLinData(pair));
    Ank_SpecialLine* arc = nullptr;
    EXPECT_EQ(CDimSymUitity::FillSpecLinData({0, 0, 0}, {0, 2, 0}, {2, 0, 0}, 2.0F, &arc), 0);
    made.built.AddSpecialLine(arc);
    EXPECT_EQ(made.record(),
              "\nextension line 1 1, curve 1 3 2 1, domain 0 0, "
              "\nextension line 1 0, curve 1 3 1 1, point 0 0 0, point 5 0 0, domain 0 0, "
              "\nspecial line 0, curve 1 5 1 1, point 0 0 0, point 5 0 0, domain 0 0, "
              "\nspecial line -1, curve 2 5 2 1, point 0 2 0, point 2 0 0, point 0 0 0, "
              "normal 0 0 -1, radius 2 2, parameter 1.57079637 0, domain 1.57079637 0, "
              "axis 0 0 1, axis 1 0 0, axis 0 1 0, axis 0 0 1, ");
}

TEST(Builder, TextStacksUpwardsWhateverItsAxes) {
    Taken made;
    ANK_DIR32 axes[2] = {{0, 1, 0}, {0, 0, 1}};
    ANK_PNT32 location{10, 20, 30};
    Ank_ComText* block = nullptr;
    CDimSymUitity::FillTextData({L"A", L"", L"B12"}, location, axes, -1.0, &block);
    made.blockOut.reset(block);
    const std::string size = "spacing 0, size 2.47487378 3.5, ";
    const std::string turned = "x 0 1 0, y 0 0 1, ";
    EXPECT_EQ(made.record(), "\nblock, box 10 20 32.4748726, box 10 23 30, \ntext 0 L\"A\", " +
                                 size + "at 10 20 30, " + turned + "\ntext 0 L\"B12\", " + size +
                                 "at 10 23.5 30, " + turned);
    ExpectVec3Near(location, {10, 27, 30}, 0.0);

    ANK_PNT32 each[] = {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    CDimSymUitity::FillTextData({L"", L"A", L"B"}, each, axes, 10.0, &block);
    made.blockOut.reset(block);
    EXPECT_EQ(Vec(block->GetTexts().at(0)->GetInnerLoc()), Vec(2, 0, 0));
    EXPECT_EQ(Vec(block->GetTexts().at(1)->GetInnerLoc()), Vec(3, 0, 0));
    ExpectVec3Near(block->GetOuterBox().first, {1, 0, 10.0 / 1.41421356}, 1e-6);
    EXPECT_EQ(Vec(block->GetOuterBox().second), Vec(1, 3, 0));

    CDimSymUitity::FillTextData({}, location, axes, 1.0, &block);
    EXPECT_EQ(block, made.blockOut.get());
    CDimSymUitity::FillTextData({}, each, axes, 1.0, &block);
    EXPECT_EQ(block, made.blockOut.get());
    CDimSymUitity::FillTextData({L"", L""}, each, axes, 1.0, &block);
    EXPECT_EQ(block, nullptr);
}

TEST(Builder, WidthCountsCharactersNotControlPairs) {
    const struct {
        const wchar_t* line;
        double height, width;
    } cases[] = {{L"12.5", 3.5, 4}, {L"\\%25", 3.5, 2}, {L"-1", 3.5, 1},     {L"-123", 3.5, 3},
                 {L".5", 3.5, 1},   {L"", 3.5, 0},      {L"\\~\\&", 3.5, 0}, {L"a\\", 3.5, 2},
                 {L"12.5", 2.0, 0}, {L"12.5", 10.0, 12}};
    for (const auto& c : cases) {
        double size[2] = {c.height / 1.41421356, c.height};
        ANK_PNT32 location{1, 2, 3};
        ANK_DIR32 axes[2] = {{1, 0, 0}, {0, 1, 0}};
        double corners[2][3];
        CDimSymUitity::ComputeTxtFrame({}, size, location, axes, corners[0], corners[1]);
        EXPECT_EQ(Vec(location), Vec(1, 2, 3));
        CDimSymUitity::ComputeTxtFrame({L"", c.line, L""}, size, location, axes, corners[0],
                                       corners[1]);
        EXPECT_EQ(Vec(corners[1]), Vec(1 + c.width, 2, 3)) << PrintToString(c.line);
        ExpectVec3Near(Vec(corners[0]), {1, 2 + size[0], 3}, 1e-12);
        ExpectVec3Near(location, {1, 2 + 3 * c.height, 3}, 1e-5);
    }
}

/// An annotation of two text blocks, at (1, 5) and (2, 5), and one that is missing.
struct Framed : Arguments {
    Framed() : Arguments({}) {
        for (const float x : {1.0F, 2.0F}) {
            ANK_PNT32 location{x, 5, 0};
            Ank_ComText* block = nullptr;
            CDimSymUitity::FillTextData({L"A", L"B"}, location, directions, 3.5, &block);
            pmi.AddComText(block);
        }
        pmi.AddComText(nullptr);
        envelope = {true, 0x330000FFU, 0xFF3300U};
    }
    /// How the blocks are framed, and the leaders.
    std::string frames() const {
        Annotation record = read(pmi);
        const std::set<std::string> shown{"frame", "colour", "anchor", "leader"};
        std::erase_if(record.fields,
                      [&](const Field& field) { return !shown.contains(field.name); });
        return PrintToString(record);
    }
};

std::string frameAt(const std::string& anchor) {
    return "frame 1 6, colour 1 0 0 0, colour 0 0.200000003 1 0, anchor " + anchor + ", ";
}

TEST(Envelope, FramesTheFirstBlockAtItsFirstLine) {
    Framed framed;
    run("FillEnvelope", framed);
    EXPECT_EQ(framed.frames(), frameAt("1 5 0"));
    unsigned long colors[2] = {};
    for (Ank_ComText* block : {new Ank_ComText, static_cast<Ank_ComText*>(nullptr)}) {
        Ank_PMI pmi;
        CDimSymUitity::FillEnvelope(&pmi, true, colors[0], colors[1]);
        pmi.AddComText(block);
        CDimSymUitity::FillEnvelope(&pmi, true, colors[0], colors[1]);
        EXPECT_TRUE(block == nullptr || block->GetEnvelope() == nullptr);
    }
}

TEST(Envelope, FramesEveryBlockAtTheFirstLeadersFarEnd) {
    Framed framed;
    PMISetEnvelope(1, true, true, true, framed.envelope, nullptr);
    run("PMISetEnvelope", framed);
    EXPECT_EQ(framed.frames(), frameAt("0 0 0") + frameAt("0 0 0"));
    enum { kApply = 1, kStub = 2, kFrame = 4 };
    auto bent = std::make_unique<Ank_PolyLine>();
    bent->SetPoints({{0, 0, 0}, {5, 5, 0}, {7, 2, 0}});
    const std::string plain = "\nleader 0 0, ";
    const std::string stub = "\nleader 0 1, ";
    struct {
        std::unique_ptr<Ank_CurveEntity> curve;
        int mode, flags;
        std::string frames;
    } cases[] = {
        {std::move(bent), 1, kApply | kStub | kFrame, frameAt("7 2 0") + frameAt("7 2 0") + stub},
        {std::make_unique<Ank_Ellipse>(framed.arc), 1, kApply | kFrame,
         frameAt("50 80 0") + frameAt("50 80 0") + plain},
        {std::make_unique<Ank_Ellipse>(framed.arc), 1, kApply | kStub, stub},
        {std::make_unique<Ank_Ellipse>(framed.arc), 1, kStub | kFrame, plain},
        {std::make_unique<Ank_Ellipse>(framed.arc), 0, kApply | kStub | kFrame, plain},
        // No end to anchor at.
        {nullptr, 1, kApply | kStub | kFrame, plain},
        {std::make_unique<Ank_Line>(), 1, kApply | kStub | kFrame, plain},
        {std::make_unique<Ank_PolyLine>(), 1, kApply | kStub | kFrame, plain},
    };
    for (auto& c : cases) {
        Framed each;
        auto* const leader = new Ank_Leader;
        leader->SetCurve(c.curve.release());
        each.pmi.SetLeaders({leader});
        each.mode = c.mode;
        each.flags = c.flags;
        run("PMISetEnvelope", each);
        EXPECT_EQ(each.frames(), c.frames);
    }
}

} // namespace
} // namespace dorvale::test
