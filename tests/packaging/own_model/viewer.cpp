// What arrives in a viewer's own annotation model. The part lies in the model's XY plane and is
// seen from above.
#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <dorvale/dorvale.h>

/// The viewer's own way into its model.
struct viewer::Inside {
    static const auto& exLines(const Ank_PMI& pmi) { return pmi.exLines_.list; }
    static const auto& specialLines(const Ank_PMI& pmi) { return pmi.specialLines_.list; }
    static const auto& texts(const Ank_ComText& block) { return block.texts_.list; }
    static const auto& envelopes(const Ank_ComText& block) { return block.envelope_.list; }
    static const auto& curves(const Ank_Extensionline& line) { return line.curve_.list; }
    static const std::wstring& text(const Ank_Text& text) { return text.text_; }
};

namespace {

using viewer::Inside;
using viewer::Numbers;

constexpr double kPi = 3.141592653589793;

void expectNear(const Numbers& actual, const Numbers& expected, double tolerance = 1e-4) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "number " << i;
    }
}

struct Edge : Ank_Line {
    Edge(const ANK_PNT32& start, const ANK_PNT32& end) {
        SetStartPoint(start);
        SetEndPoint(end);
    }
};

ANK_DIR32 direction(float x, float y, float z) {
    ANK_DIR32 made;
    made.x = x;
    made.y = y;
    made.z = z;
    return made;
}

/// A quarter of a circle about (50, 50), and what else there is to measure.
struct Part {
    Part() {
        hole.SetCenterPoint({50, 50, 0});
        hole.SetNormal(direction(0, 0, 1));
        hole.SetRadius(20, 20);
        hole.SetCoordiantePnt({70, 50, 0}, {50, 70, 0});
        chain.SetPoints({{10, 25, 0}, {20, 30, 0}});
    }

    _ank_locate* at(double x, double y) {
        located = {{x, y, 0}, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
        return &located;
    }

    Edge bottom{{10, 0, 0}, {100, 0, 0}};
    Edge top{{10, 40, 0}, {100, 40, 0}};
    Edge left{{0, 10, 0}, {0, 100, 0}};
    Edge slant{{0, 0, 0}, {30, 40, 0}};
    Edge side1{{0, 0, 0}, {0, -8, 0}};
    Edge side2{{30, 40, 0}, {30, -8, 0}};
    Ank_Ellipse hole;
    Ank_PolyLine chain;
    double points[6][3] = {{0, 0, 0}, {0, -9, 0}, {0, 0, 0}, {30, 40, 0}, {30, 49, 0}, {30, 40, 0}};
    double centres[4][3] = {{0, 0, 0}, {0, -9, 0}, {30, 40, 0}, {30, 49, 0}};
    double text[3] = {60, 10, 0};
    double normal[3] = {0, 0, 2};
    double origin[3] = {0, 0, 0};
    double xPoint[3] = {30, 40, 0};
    double xAxis[3] = {7, 0, 0};
    double view[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    _ank_locate located{};
    int kind = 900001;
    int mode = 1;
    int status = 0;
    int flags[2] = {};
    int gaps = 0;
    double gapEnds[4][3] = {};
};

constexpr double kHeight = 3.5;

void fillNote(Part& part, Ank_PMI& pmi) {
    std::vector<PMITextLine> lines{{1, L"M8"}, {0, L"deep"}};
    PMICreateNote3D(lines, part.origin, part.text, 0, true, L"3x", kHeight, &pmi, &part.status);
}

void fillAxes(Part& part, Ank_PMI& pmi) {
    PMICreateAxToAx(part.points, part.text, kHeight, &pmi, &part.status, nullptr);
}

void fillClipArc(Part& part, Ank_PMI& pmi) {
    PMICreateClipArcDim3D(nullptr, part.normal, part.origin, part.xAxis, &part.hole,
                          part.at(50 + 30 * std::sqrt(0.5), 50 + 30 * std::sqrt(0.5)), kHeight,
                          &pmi, &part.status, part.view, &part.bottom, &part.left);
}

void fillAngle(Part& part, Ank_PMI& pmi) {
    PMICreateAngleDim(&part.mode, &part.bottom, &part.left, part.at(15, 20), kHeight, &pmi,
                      &part.status, part.gaps, part.gapEnds, part.view);
}

struct Kind {
    const char* name;
    void (*fill)(Part&, Ank_PMI&);
    std::wstring text;
    /// Empty where a generator sets none.
    Numbers type;
    Numbers parallelScreen;
    std::size_t leaders;
    std::size_t exLines;
    std::size_t specialLines = 0;

    friend std::ostream& operator<<(std::ostream& out, const Kind& kind) {
        return out << kind.name;
    }
};

const Kind kKinds[] = {
    {"AxToAx", fillAxes, L"50.00", {}, {1}, 2, 2},
    {"CntToCnt",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateCntToCnt(p.centres, p.text, kHeight, &pmi, &p.status, nullptr);
     },
     L"50.00",
     {},
     {1},
     2,
     2},
    {"PLNTOPLN",
     [](Part& p, Ank_PMI& pmi) {
         PMICreatePLNTOPLN(p.points, p.text, kHeight, &pmi, &p.status, nullptr);
     },
     L"50.00",
     {},
     {1},
     2,
     2},
    {"PntToFace",
     [](Part& p, Ank_PMI& pmi) {
         PMICreatePntToFace(p.points, p.text, kHeight, &pmi, &p.status, nullptr);
     },
     L"50.00",
     {},
     {1},
     2,
     2},
    {"LinDist",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateLinDistDim3D(&p.bottom, &p.top, p.at(120, 15), kHeight, &pmi, &p.status, p.view,
                               nullptr);
     },
     L"40.00",
     {10},
     {},
     2,
     2},
    {"LinDot",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateLinDotDim3D(&p.bottom, &p.hole, p.at(120, 15), kHeight, &pmi, &p.status, p.view);
     },
     L"50.00",
     {10},
     {},
     2,
     2},
    {"DotDist",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateDotDistDim3D(&p.side1, &p.side2, kHeight, &pmi, &p.status, p.view);
     },
     L"50.00",
     {10},
     {},
     2,
     2},
    {"ClipDim",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateClipDim3D(p.normal, p.origin, p.xPoint, p.at(0, 30), kHeight, &pmi, &p.status,
                            p.view);
     },
     L"50.00",
     {},
     {},
     2,
     2},
    {"ClipLinDot",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateClipLinDotDim3D(p.normal, p.origin, p.xAxis, &p.bottom, &p.chain, p.at(-9, 12),
                                  kHeight, &pmi, &p.status, p.view);
     },
     L"25.00",
     {10},
     {},
     2,
     2},
    {"Parallel",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateParallelDim3D(&p.kind, nullptr, &p.bottom, &p.slant, nullptr, p.at(0, 30),
                                kHeight, &pmi, &p.status, p.view);
     },
     L"50.00",
     {1},
     {},
     2,
     2},
    {"StraightLength",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateArcDim3D(nullptr, &p.slant, p.at(0, 30), kHeight, &pmi, &p.status, p.view,
                           &p.bottom, &p.left);
     },
     L"50.00",
     {},
     {1},
     2,
     2},
    // 20 * pi / 2
    {"ArcLength",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateArcDim3D(nullptr, &p.hole, p.at(75, 75), kHeight, &pmi, &p.status, p.view,
                           &p.bottom, &p.left);
     },
     L"31.42",
     {},
     {1},
     2,
     2},
    {"ClipArcLength", fillClipArc, L"31.42", {28}, {}, 2, 2},
    {"Diameter",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateDiameterDim3D(&p.kind, &p.hole, p.at(80, 90), nullptr, kHeight, &pmi, &p.status,
                                p.view);
     },
     L"\u230040.00",
     {4},
     {1},
     2,
     0},
    {"Radius",
     [](Part& p, Ank_PMI& pmi) {
         PMICreateRadiusDim3D(&p.kind, &p.hole, p.at(80, 90), nullptr, kHeight, &pmi, &p.status,
                              p.view);
     },
     L"R20.00",
     {6},
     {1},
     1,
     0},
    {"Angle", fillAngle, L"90\u00B0", {2}, {1}, 2, 0},
    // Both edges lack 10 to their crossing.
    {"PickedAngle",
     [](Part& p, Ank_PMI& pmi) {
         _ank_element picked[] = {{&p.bottom, {50, 0, 0}}, {&p.left, {0, 50, 0}}};
         PMICreateAngleDim3D(&p.mode, &p.flags[0], &p.flags[1], &picked[0], &picked[1], p.at(3, 4),
                             nullptr, nullptr, kHeight, &pmi, &p.status, p.view);
     },
     L"90\u00B0",
     {2},
     {1},
     2,
     0,
     2},
    {"Note", fillNote, L"M8", {}, {}, 1, 0},
    {"Update",
     [](Part& p, Ank_PMI& pmi) { PMIUpdateDimesion(&pmi, p.origin, p.xPoint, nullptr, &p.status); },
     L"50.00",
     {},
     {},
     2,
     0},
    {"Envelope",
     [](Part& p, Ank_PMI& pmi) {
         fillNote(p, pmi);
         Envelope envelope{true, 0x0000FF, 0xFF0000};
         PMISetEnvelope(1, true, true, true, envelope, &pmi);
     },
     L"M8",
     {},
     {},
     1,
     0},
};

const Ank_Text& firstText(const Ank_PMI& pmi) {
    return *Inside::texts(*pmi.GetComText().at(0)).at(0);
}

class OwnModelNumbers : public testing::Test {
protected:
    ~OwnModelNumbers() override { EXPECT_EQ(viewer::alive(), 0U) << "left behind"; }
};

class OwnModel : public OwnModelNumbers, public testing::WithParamInterface<Kind> {};

TEST_P(OwnModel, TakesEveryKind) {
    const Kind& kind = GetParam();
    Part part;
    Ank_PMI pmi;
    kind.fill(part, pmi);
    EXPECT_EQ(part.status, 0);
    EXPECT_EQ(Inside::text(firstText(pmi)), kind.text);
    EXPECT_EQ(pmi.told("SetType"), kind.type);
    EXPECT_EQ(pmi.told("SetParallelScreen"), kind.parallelScreen);
    ASSERT_EQ(pmi.GetLeaders().size(), kind.leaders);
    ASSERT_EQ(Inside::exLines(pmi).size(), kind.exLines);
    ASSERT_EQ(Inside::specialLines(pmi).size(), kind.specialLines);
    // The curve types of the line objects: arcs where the leader is one, polylines else.
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        const Ank_CurveEntity& curve = *leader->GetAllCurve().at(0);
        EXPECT_EQ(leader->told("SetLeaderType").at(0), curve.GetCurveType() == ACT_ROUND ? 2 : 1);
        EXPECT_EQ(curve.told("SetUsageType"), Numbers{1});
        EXPECT_EQ(leader->told("SetTerminator").size(), 9U);
    }
    for (const Ank_Extensionline* line : Inside::exLines(pmi)) {
        EXPECT_EQ(line->told("SetExLineType"), Numbers{1});
        EXPECT_EQ(line->told("SetDisplay"), Numbers{1});
        const Ank_CurveEntity& curve = *Inside::curves(*line).at(0);
        EXPECT_EQ(curve.told("SetUsageType"), Numbers{3});
        EXPECT_EQ(curve.told("SetCurveDispType"), Numbers{2});
    }
    for (const Ank_SpecialLine* line : Inside::specialLines(pmi)) {
        EXPECT_EQ(line->told("SetSpecLinUse"), Numbers{0});
        EXPECT_EQ(line->GetCurves().at(0)->told("SetUsageType"), Numbers{5});
    }
}

// Out of memory at each object and each hand-over in turn: what was taken is the annotation's, the
// rest is nobody's.
TEST_P(OwnModel, LeavesNothingBehindWithoutMemory) {
    Part part;
    bool failed = true;
    for (int steps = 1; failed; ++steps) {
        const std::size_t before = viewer::alive();
        {
            Ank_PMI pmi;
            viewer::failIn(steps);
            failed = false;
            try {
                GetParam().fill(part, pmi);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            viewer::failIn(0);
        }
        ASSERT_EQ(viewer::alive(), before) << "after step " << steps;
        ASSERT_LT(steps, 100);
    }
}

INSTANTIATE_TEST_SUITE_P(OwnModel, OwnModel, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_F(OwnModelNumbers, Distance) {
    Part part;
    Ank_PMI pmi;
    fillAxes(part, pmi);
    expectNear(pmi.told("SetDefPlane"), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    EXPECT_EQ(pmi.told("SetDim"), Numbers{3});
    EXPECT_EQ(pmi.told("SetDisplay"), Numbers{1});
    // From (0, 0) to the text at (60, 10).
    const double far = std::hypot(60.0, 10.0);
    expectNear(pmi.GetLeaders().at(0)->told("SetTerminator"),
               {4, 3.36, 1.12, 0, 0, 0, 60 / far, 10 / far, 0});
    const Ank_Text& text = firstText(pmi);
    expectNear(text.told("SetCharWidthHeight"), {3.5 / 1.41421356, 3.5});
    expectNear(text.told("SetCharSpacing"), {0});
    expectNear(text.told("SetInnerLoc"), {60, 10, 0});
    expectNear(text.told("SetInnerXYAxis"), {0, 1, 0, 1, 0, 0});
    // Five characters of half a width each, cut to a whole number at every step.
    expectNear(pmi.GetComText().at(0)->told("SetOuterBox"),
               {60 + 3.5 / 1.41421356, 10, 0, 60, 15, 0});

    // The update gives it leaders in place of these two, and a text beside its own.
    double p1[3] = {0, 0, 0};
    double p2[3] = {0, 60, 0};
    const std::size_t before = viewer::alive();
    PMIUpdateDimesion(&pmi, p1, p2, nullptr, &part.status);
    EXPECT_EQ(viewer::alive(), before + 2);
    ASSERT_EQ(pmi.GetComText().size(), 2U);
    EXPECT_EQ(Inside::text(*Inside::texts(*pmi.GetComText().at(1)).at(0)), L"60.00");
    expectNear(pmi.GetLeaders().at(1)->told("SetTerminator"), {4, 3.36, 1.12, 0, 60, 0, 0, -1, 0});
}

TEST_F(OwnModelNumbers, ArcAndItsArrows) {
    Part part;
    Ank_PMI pmi;
    fillClipArc(part, pmi);
    const double r = 30.0;
    const double d = r * std::sqrt(0.5);
    const Ank_CurveEntity& arc = *pmi.GetLeaders().at(0)->GetAllCurve().at(0);
    expectNear(arc.told("SetCenterPoint"), {50, 50, 0});
    expectNear(arc.told("SetNormal"), {0, 0, 1});
    expectNear(arc.told("SetOriginDir"), {0, 0, 1});
    expectNear(arc.told("SetXYZDir"), {1, 0, 0, 0, 1, 0, 0, 0, 1});
    expectNear(arc.told("SetRadius"), {r, r});
    expectNear(arc.told("SetParameter"), {0, kPi / 4});
    expectNear(arc.told("SetDomain"), {0, kPi / 4});
    expectNear(arc.told("SetCoordiantePnt"), {50 + r, 50, 0, 50 + d, 50 + d, 0});
    EXPECT_EQ(arc.told("SetCurveDispType"), Numbers{2});
    // The eighth of a circle is 23.56 long: 7 chords of about 3.36.
    const double half = kPi / 4 / 7 / 2;
    const double chord = 2 * r * std::sin(half);
    expectNear(pmi.GetLeaders().at(0)->told("SetTerminator"),
               {4, chord, chord / 3, 50 + r, 50, 0, -std::sin(half), std::cos(half), 0});
    // The other half runs clockwise from the end.
    expectNear(pmi.GetLeaders().at(1)->GetAllCurve().at(0)->told("SetNormal"), {0, 0, -1});
    expectNear(pmi.GetLeaders().at(1)->told("SetTerminator"),
               {4, chord, chord / 3, 50, 50 + r, 0, std::cos(half), -std::sin(half), 0});
}

TEST_F(OwnModelNumbers, AngleAndItsGaps) {
    Part part;
    Ank_PMI pmi;
    fillAngle(part, pmi);
    expectNear(firstText(pmi).told("SetInnerXYAxis"), {0, 0, 0, 0, 0, 0});
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        expectNear(leader->GetAllCurve().at(0)->told("SetRadius"), {25, 25});
        EXPECT_EQ(leader->told("SetTerminator").at(0), 4);
    }
    EXPECT_EQ(part.gaps, 2);
}

TEST_F(OwnModelNumbers, FramedNote) {
    Part part;
    Ank_PMI pmi;
    fillNote(part, pmi);
    Envelope envelope{true, 0x0000FF, 0xFF0000};
    PMISetEnvelope(1, true, true, true, envelope, &pmi);
    const Ank_ComText& block = *pmi.GetComText().at(0);
    expectNear(block.told("SetOuterBox"), {1, 1, 1, -1, -1, -1});
    const auto& texts = Inside::texts(block);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[0]->told("SetUsageType"), Numbers{26});
    EXPECT_EQ(texts[2]->told("SetUsageType"), Numbers{7});
    expectNear(texts[1]->told("SetInnerLoc"), {60, 6.5, 0});
    EXPECT_EQ(pmi.GetLeaders().at(0)->told("SetStubDelta"), Numbers{1});
    const viewer::Object& frame = *Inside::envelopes(block).at(0);
    EXPECT_EQ(frame.told("SetFrameFlag"), Numbers{1});
    EXPECT_EQ(frame.told("SetBackgroundColor"), (Numbers{1, 0, 0, 0}));
    EXPECT_EQ(frame.told("SetFrameColor"), (Numbers{0, 0, 1, 0}));
    expectNear(frame.told("SetAnchorPoint"), {6, 60, 10, 0});
    unsigned long colours[2] = {0x00FF00, 0};
    CDimSymUitity::FillEnvelope(&pmi, false, colours[0], colours[1]);
    EXPECT_EQ(Inside::envelopes(block).at(0)->told("SetBackgroundColor"), (Numbers{0, 1, 0, 0}));
}

// The builders and the projection give the caller what he deletes himself.
TEST_F(OwnModelNumbers, SingleElements) {
    Part part;
    double toModel[16] = {};
    const std::unique_ptr<Ank_CurveEntity> flat(
        CArithmeticOfPMI::Project3DTo2D(&part.hole, toModel));
    ASSERT_NE(flat, nullptr);
    ASSERT_EQ(flat->GetCurveType(), ACT_ROUND);
    expectNear(flat->told("SetCenterPoint"), {0, 0, 0});
    expectNear(flat->told("SetRadius"), {20, 20});
    expectNear({toModel[12], toModel[13], toModel[14]}, {50, 50, 0});

    Ank_SpecialLine* made = nullptr;
    EXPECT_EQ(CDimSymUitity::FillSpecLinData({0, 0, 0}, {2, 0, 0}, {0, 2, 0}, 2.0F, &made), 0);
    const std::unique_ptr<Ank_SpecialLine> line(made);
    EXPECT_EQ(line->told("SetSpecLinUse"), Numbers{});
    EXPECT_EQ(line->GetCurves().at(0)->told("SetUsageType"), Numbers{5});
    expectNear(line->GetCurves().at(0)->told("SetParameter"), {0, kPi / 2});

    std::vector<ANK_PNT32> points{{0, 0, 0}, {0, 5, 0}};
    std::vector<Ank_Leader*> leaders;
    CDimSymUitity::FillLeaderData(static_cast<AnkTermTypeEnum>(9), points, points[1], leaders,
                                  true);
    const std::unique_ptr<Ank_Leader> leader(leaders.at(0));
    expectNear(leader->told("SetTerminator"), {9, 3.36, 1.12, 0, 5, 0, 0, 1, 0});
}

} // namespace
