// The element builders, called as a host may call them.
#include <algorithm>

#include "support/annotation.h"
#include "support/members.h"
#include "support/scene.h"

using namespace dorvale::test;

namespace {

using Points = std::vector<ANK_PNT32>;
using testing::PrintToString;

/// Takes every element that a builder makes, so that all of it can be read and nothing leaks.
class BuilderTest : public testing::Test {
protected:
    void TearDown() override { own(); }

    /// The record of all that has been built.
    std::string built() {
        own();
        return PrintToString(read(pmi));
    }
    const std::string& empty() const { return empty_; }

    void own() {
        pmi.SetLeaders(leaders);
        pmi.SetExLines(exLines);
    }

    Ank_PMI pmi;
    std::vector<Ank_Leader*> leaders;
    std::vector<Ank_Extensionline*> exLines;

private:
    std::string empty_ = PrintToString(read(pmi));
};

TEST_F(BuilderTest, LeaderCarriesItsTerminatorPointEvenWithoutArrow) {
    Points points{{0, 0, 0}, {0, 0, 10}, {3, 4, 5}};
    EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {9, 9, 9}, leaders, true, false), 0);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {9, 9, 9}, leaders, false, true), 0);
    const auto given = static_cast<AnkTermTypeEnum>(9);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(given, points, {1, 1, 1}, leaders, true), 0);
    EXPECT_EQ(CDimSymUitity::FillLeaderData(given, points, {1, 1, 1}, leaders, false), 0);
    const std::string curve = "along 0 0 1, curve 1 1 0 1, point 0 0 0, point 0 0 10, "
                              "point 3 4 5, domain 0 0, ";
    const std::string size = " 3.3599999 1.12, ";
    EXPECT_EQ(built(), empty() + "\n  leader 1 0, terminator 4" + size + "at 9 9 9, " + curve +
                           "\n  leader 1 1, terminator 0" + size + "at 9 9 9, " + curve +
                           "\n  leader 1 0, terminator 9" + size + "at 1 1 1, " + curve +
                           "\n  leader 1 0, terminator 0" + size + "at 1 1 1, " + curve);
}

TEST_F(BuilderTest, WhatMakesNoPolylineIsRefused) {
    for (Points points : {Points{}, Points{{1, 2, 3}}, Points{{1, 2, 3}, {1, 2, 3}}}) {
        EXPECT_EQ(CDimSymUitity::FillLeaderData(points, {}, leaders, true, true), -1);
        EXPECT_EQ(CDimSymUitity::FillLeaderData(ANK_TERM_ARROW, points, {}, leaders, true), -1);
        EXPECT_EQ(CDimSymUitity::FillSpecLinData(points), nullptr);
        Ank_Line other;
        Ank_CurveEntity* curve = &other;
        Members::polyLinFun(points, &curve);
        EXPECT_EQ(curve, &other);
    }
    EXPECT_EQ(built(), empty());
    Points closed{{0, 0, 0}, {5, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(CDimSymUitity::FillLeaderData(closed, {}, leaders, true, false), 0);
    Points stuck{{5, 0, 0}, {5, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(CDimSymUitity::FillLeaderData(stuck, {}, leaders, true, false), 0);
}

TEST_F(BuilderTest, CurvesOfAPointList) {
    Points points{{1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    const auto converted = [&](AnkCurveTypeEnum type) {
        Ank_CurveEntity* curve = nullptr;
        Members::ConvertToAnkCurve(points, type, &curve);
        const std::unique_ptr<Ank_CurveEntity> owned(curve);
        return curve == nullptr ? std::vector<Vec>{} : pointsOf(*curve);
    };
    EXPECT_EQ(converted(ANK_CURVE_LINE), (std::vector<Vec>{{1, 0, 0}, {2, 0, 0}}));
    EXPECT_EQ(converted(ANK_CURVE_POLYLINE), std::vector<Vec>(points.begin(), points.end()));
    EXPECT_TRUE(converted(ANK_CURVE_ARC).empty());
}

TEST_F(BuilderTest, ArcTakesAGivenNormalUnlessItsComponentsAddUpToNothing) {
    const ANK_PNT32 center{1, 1, 2};
    const ANK_PNT32 start{4, 1, 2};
    const ANK_PNT32 end{1, 4, 2};
    const std::pair<Vec, Vec> normals[] = {{{0, 0, -1}, {0, 0, -1}},
                                           {{0, 0, 5}, {0, 0, 5}},
                                           {{0, 0, 0}, {0, 0, 1}},
                                           {{1, -1, 0}, {0, 0, 1}}};
    for (const auto& [given, used] : normals) {
        double normal[3] = {given.x, given.y, given.z};
        EXPECT_EQ(CDimSymUitity::FillLeaderData(center, start, end, 3.0F, leaders, normal), 0);
        EXPECT_EQ(Vec(normal), used);
        const auto& arc = static_cast<Ank_Ellipse&>(*leaders.back()->GetAllCurve().at(0));
        EXPECT_EQ(Vec(arc.GetNormal()), used);
    }
    own();
    leaders.clear();
    CDimSymUitity::FillLeaderData(center, start, end, 3.0F, leaders, nullptr);
    EXPECT_EQ(built(), empty() + "\n  leader 2 0, terminator 0 0 0, at 0 0 0, along 0 0 0, "
                                 "curve 2 1 2 1, point 4 1 2, point 1 4 2, point 1 1 2, "
                                 "radius 3 3, normal 0 0 1, parameter 0 1.57079637, "
                                 "originDir 0 0 1, axis 1 0 0, axis 0 1 0, axis 0 0 1, "
                                 "domain 0 1.57079637, ");
}

/// An arc leader about (5, 5) between two angles.
void addArc(std::vector<Ank_Leader*>& leaders, double radius, double from, double to, double z) {
    const auto at = [&](double t) {
        return (Vec{5, 5, 0} + Vec{std::cos(t), std::sin(t), 0} * radius).point32();
    };
    double normal[3] = {0.0, 0.0, z};
    CDimSymUitity::FillLeaderData({5, 5, 0}, at(from), at(to), static_cast<float>(radius), leaders,
                                  normal);
}

TEST_F(BuilderTest, ArcArrowsSpanTheFirstChord) {
    Random random(8);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(random);
        const double radius = random.number(0.5, 300.0);
        const double from = random.number(-3.0, 3.0);
        const double z = i % 2 == 0 ? 1.0 : -1.0;
        const double sweep = random.number(0.1, 6.0);
        addArc(leaders, radius, from, from + z * sweep, z);
        CDimSymUitity::SetTerminator(leaders);
        AnkTermTypeEnum type{};
        float size[2];
        ANK_PNT32 tip;
        ANK_DIR32 direction;
        leaders.back()->GetTerminator(type, size, tip, direction);
        EXPECT_EQ(type, ANK_TERM_ARROW);
        EXPECT_NEAR(size[1] * 3.0, size[0], 1e-5 * size[0]);
        const Vec tail = Vec(tip) + Vec(direction) * size[0] - Vec{5, 5, 0};
        ExpectVec3Near(tip, pointsOf(*leaders.back()->GetAllCurve()[0])[0], 1e-4);
        EXPECT_NEAR(length(tail), radius, 1e-4);
        const double chord = 2.0 * std::asin(size[0] / (2.0 * radius));
        EXPECT_LE(chord, sweep / 3.0 + 1e-4);
        EXPECT_NEAR(
            std::remainder(std::atan2(tail.y, tail.x) - from - z * chord, 2.0 * std::numbers::pi),
            0.0, 1e-4);
    }
}

TEST_F(BuilderTest, ArcArrowsStopAtAnEmptyArc) {
    Points points{{0, 0, 0}, {1, 0, 0}};
    CDimSymUitity::FillLeaderData(points, {}, leaders, false, false);
    leaders.push_back(new Ank_Leader);
    addArc(leaders, 10.0, 0.0, 1.0, 1.0);
    addArc(leaders, 10.0, 1.0, 1.0, 1.0);
    addArc(leaders, 10.0, 0.0, 1.0, 1.0);
    CDimSymUitity::SetTerminator(leaders);
    std::vector<AnkTermTypeEnum> types;
    for (const Ank_Leader* leader : leaders) {
        float size[2];
        ANK_PNT32 tip;
        ANK_DIR32 direction;
        leader->GetTerminator(types.emplace_back(), size, tip, direction);
    }
    EXPECT_EQ(types, (std::vector{ANK_TERM_NONE, ANK_TERM_NONE, ANK_TERM_ARROW, ANK_TERM_NONE,
                                  ANK_TERM_NONE}));
}

TEST_F(BuilderTest, ExtensionAndSpecialLines) {
    Points none;
    Points pair{{0, 0, 0}, {5, 0, 0}};
    CDimSymUitity::FillExlineData(none, exLines, true);
    CDimSymUitity::FillExlineData(pair, exLines, ANK_CURVE_DISP_SPECIAL_LINE, false);
    pmi.AddSpecialLine(CDimSymUitity::FillSpecLinData(pair));
    Ank_SpecialLine* arc = nullptr;
    EXPECT_EQ(CDimSymUitity::FillSpecLinData({0, 0, 0}, {0, 2, 0}, {2, 0, 0}, 2.0F, &arc), 0);
    pmi.AddSpecialLine(arc);
    EXPECT_EQ(built(), empty() + "\n  extension line 1 1, curve 1 3 2 1, domain 0 0, "
                                 "\n  extension line 1 0, curve 1 3 1 1, point 0 0 0, point 5 0 0, "
                                 "domain 0 0, "
                                 "\n  special line 0, curve 1 5 1 1, point 0 0 0, point 5 0 0, "
                                 "domain 0 0, "
                                 "\n  special line -1, curve 2 5 2 1, point 0 2 0, point 2 0 0, "
                                 "point 0 0 0, radius 2 2, normal 0 0 -1, parameter 1.57079637 0, "
                                 "originDir 0 0 1, axis 1 0 0, axis 0 1 0, axis 0 0 1, "
                                 "domain 1.57079637 0, ");
}

TEST_F(BuilderTest, TextStacksUpwardsWhateverItsAxes) {
    ANK_DIR32 axes[2] = {{0, 1, 0}, {0, 0, 1}};
    ANK_PNT32 location{10, 20, 30};
    Ank_ComText* block = nullptr;
    CDimSymUitity::FillTextData({L"A", L"", L"B12"}, location, axes, -1.0, &block);
    ASSERT_NE(block, nullptr);
    pmi.AddComText(block);
    const std::string line = "font, size 2.47487378 3.5 0, usage 0, ";
    const std::string turned = "x 0 1 0, y 0 0 1, ";
    EXPECT_EQ(built(), empty() + "\n  block, box 10 20 32.4748726, box 10 23 30, " +
                           "\n    text L\"A\", " + line + "at 10 20 30, " + turned +
                           "\n    text L\"B12\", " + line + "at 10 23.5 30, " + turned);
    ExpectVec3Near(location, {10, 27, 30}, 0.0);

    ANK_PNT32 each[] = {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}};
    CDimSymUitity::FillTextData({L"", L"A", L"B"}, each, axes, 10.0, &block);
    pmi.AddComText(block);
    EXPECT_EQ(Vec(block->GetTexts().at(0)->GetInnerLoc()), Vec(2, 0, 0));
    EXPECT_EQ(Vec(block->GetTexts().at(1)->GetInnerLoc()), Vec(3, 0, 0));
    ExpectVec3Near(block->GetOuterBox().first, {1, 0, 10.0 / 1.41421356}, 1e-6);
    EXPECT_EQ(Vec(block->GetOuterBox().second), Vec(1, 3, 0));

    Ank_ComText* const before = block;
    CDimSymUitity::FillTextData({}, location, axes, 1.0, &block);
    EXPECT_EQ(block, before);
    CDimSymUitity::FillTextData({L"", L""}, each, axes, 1.0, &block);
    EXPECT_EQ(block, nullptr);
}

TEST_F(BuilderTest, WidthCountsCharactersNotControlPairs) {
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
        double corner1[3];
        double corner2[3];
        CDimSymUitity::ComputeTxtFrame({L"", c.line, L""}, size, location, axes, corner1, corner2);
        EXPECT_EQ(Vec(corner2), Vec(1 + c.width, 2, 3)) << PrintToString(c.line);
        ExpectVec3Near(Vec(corner1), {1, 2 + size[0], 3}, 1e-12);
        ExpectVec3Near(location, {1, 2 + 3 * c.height, 3}, 1e-5);
    }
}

class EnvelopeTest : public BuilderTest {
protected:
    EnvelopeTest() {
        for (const float x : {1.0F, 2.0F}) {
            ANK_DIR32 axes[2] = {{1, 0, 0}, {0, 1, 0}};
            ANK_PNT32 location{x, 5, 0};
            Ank_ComText* block = nullptr;
            CDimSymUitity::FillTextData({L"A", L"B"}, location, axes, 3.5, &block);
            pmi.AddComText(block);
        }
    }
    void frameAll(bool stub, bool withEnvelope, int mode = 1, bool apply = true) {
        Envelope envelope{true, 0x330000FFU, 0xFF3300U};
        PMISetEnvelope(mode, apply, stub, withEnvelope, envelope, &pmi);
    }
    Vec anchor(std::size_t block) const {
        AnkAnchorTypeEnum type{};
        ANK_PNT32 point{-1, -1, -1};
        if (const Ank_Envelope* envelope = pmi.GetComText().at(block)->GetEnvelope()) {
            envelope->GetAnchorPoint(type, point);
            EXPECT_EQ(type, ANK_ANCHOR_LOCATION);
        }
        return point;
    }
};

TEST_F(EnvelopeTest, FirstBlockIsFramedAtItsFirstLine) {
    unsigned long background = 0x330000FFUL;
    unsigned long frame = 0xFF3300UL;
    CDimSymUitity::FillEnvelope(&pmi, true, background, frame);
    EXPECT_EQ(anchor(0), Vec(1, 5, 0));
    EXPECT_EQ(pmi.GetComText()[1]->GetEnvelope(), nullptr);
    EXPECT_NE(built().find("frame 1 6, background 1 0 0 0, color 0 0.200000003 1 0"),
              std::string::npos);
    Ank_PMI bare;
    CDimSymUitity::FillEnvelope(&bare, true, background, frame);
    EXPECT_EQ(PrintToString(read(bare)), empty());
}

TEST_F(EnvelopeTest, EveryBlockIsFramedAtTheFirstLeadersFarEnd) {
    frameAll(true, true);
    EXPECT_EQ(anchor(1), Vec(0, 0, 0));
    Points points{{0, 0, 0}, {5, 5, 0}, {7, 2, 0}};
    CDimSymUitity::FillLeaderData(points, {}, leaders, true, false);
    own();
    frameAll(true, true);
    EXPECT_EQ(anchor(0), Vec(7, 2, 0));
    EXPECT_EQ(anchor(1), Vec(7, 2, 0));
    EXPECT_TRUE(leaders[0]->GetStubDelta());
    leaders[0]->SetCurve(arc({}, 4.0, 1.0, 0.0).release());
    frameAll(false, true);
    EXPECT_EQ(anchor(1), Vec(4, 0, 0));
    EXPECT_FALSE(leaders[0]->GetStubDelta());
    EXPECT_NE(built().find("frame 1 6, background 1 0 0 0, color 0 0.200000003 1 0"),
              std::string::npos);
}

TEST_F(EnvelopeTest, NothingChangesWithoutAnEndToAnchorAt) {
    Points pair{{0, 0, 0}, {1, 0, 0}};
    CDimSymUitity::FillLeaderData(pair, {}, leaders, true, false);
    const std::string before = built();
    frameAll(true, true, 0);
    frameAll(true, true, 1, false);
    EXPECT_EQ(built(), before);
    for (Ank_CurveEntity* curve :
         std::initializer_list<Ank_CurveEntity*>{nullptr, new Ank_PolyLine, new Ank_Line}) {
        leaders[0]->SetCurve(curve);
        frameAll(true, true);
        EXPECT_EQ(anchor(0), Vec(-1, -1, -1));
        EXPECT_FALSE(leaders[0]->GetStubDelta());
    }
    leaders[0]->SetCurve(arc({}, 4.0, 1.0, 0.0).release());
    frameAll(true, false);
    EXPECT_EQ(anchor(0), Vec(-1, -1, -1));
    EXPECT_TRUE(leaders[0]->GetStubDelta());
}

} // namespace
