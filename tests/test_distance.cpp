// Distances between measured features, and their update.
#include "support/annotation.h"
#include "support/scene.h"

using namespace dorvale::test;

namespace {

using testing::PrintToString;
using Scene = std::array<std::array<double, 3>, 6>;

struct Distance {
    const char* name;
    decltype(&PMICreateAxToAx) create;
    /// The points that the value lies between, and at which the leaders start.
    std::size_t measured[2];
    std::size_t anchors[2];
    /// Each extension line starts in the middle of two points, or at one named twice.
    std::size_t bases[2][2];
};

const Distance kDistances[] = {
    {"AxToAx", PMICreateAxToAx, {2, 5}, {2, 5}, {{1, 1}, {4, 4}}},
    {"CntToCnt", PMICreateCntToCnt, {0, 2}, {1, 3}, {{0, 0}, {2, 2}}},
    {"PLNTOPLN", PMICreatePLNTOPLN, {2, 5}, {2, 5}, {{0, 1}, {3, 4}}},
    {"PntToFace", PMICreatePntToFace, {2, 5}, {2, 5}, {{1, 1}, {4, 4}}},
};

void create(const Distance& kind, const Scene& scene, const Vec& text, double height,
            Ank_PMI& pmi) {
    double points[6][3];
    for (std::size_t i = 0; i < 6; ++i) {
        std::copy(scene[i].begin(), scene[i].end(), points[i]);
    }
    int status = 7;
    kind.create(points, text.array().data(), height, &pmi, &status, nullptr);
    EXPECT_EQ(status, 0);
}

Scene randomScene(Random& random) {
    Scene scene;
    std::generate(scene.begin(), scene.end(), [&] { return random.point().array(); });
    return scene;
}

/// Checks a leader with its arrow at `from`, pointing to `to`.
void expectArrow(const Ank_PMI& pmi, std::size_t i, const Vec& from, const Vec& to) {
    const std::vector<Vec> points = leaderPoints(pmi, i);
    ASSERT_EQ(points.size(), 2U);
    ExpectVec3Near(points[0], from, 1e-5);
    ExpectVec3Near(points[1], to, 1e-5);
    AnkTermTypeEnum type{};
    float size[2];
    ANK_PNT32 tip;
    ANK_DIR32 direction;
    pmi.GetLeaders()[i]->GetTerminator(type, size, tip, direction);
    EXPECT_EQ(type, ANK_TERM_ARROW);
    EXPECT_EQ(Vec(tip), points[0]);
    ExpectVec3Near(direction, unit(to - from), 1e-5);
}

class DistanceTest : public testing::TestWithParam<Distance> {};

TEST_P(DistanceTest, ShowsWhatItsOwnLinesMeasure) {
    Random random(13);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(random);
        const Scene scene = randomScene(random);
        const auto at = [&](std::size_t point) { return Vec(scene[point].data()); };
        const Vec text = random.point();
        Ank_PMI pmi;
        pmi.SetType(ANK_PMI_CLIP_ARC);
        const std::string plane = PrintToString(read(Ank_PMI{})).substr(20);
        create(GetParam(), scene, text, 2.5, pmi);
        ASSERT_EQ(pmi.GetLeaders().size(), 2U);
        ASSERT_EQ(pmi.GetExLines().size(), 2U);
        for (std::size_t side = 0; side < 2; ++side) {
            const Vec anchor = at(GetParam().anchors[side]);
            expectArrow(pmi, side, anchor, text);
            const auto& base = GetParam().bases[side];
            const std::vector<Vec> extension = extensionPoints(pmi, side);
            ExpectVec3Near(extension.at(0), (at(base[0]) + at(base[1])) * 0.5, 1e-5);
            ExpectVec3Near(extension.at(1), anchor, 1e-5);
        }
        // The measured points stand at the leaders' starts or at the extension lines'.
        const bool atAnchors = GetParam().measured[0] == GetParam().anchors[0];
        const auto drawnFrom = atAnchors ? leaderPoints : extensionPoints;
        EXPECT_NEAR(std::stod(valueText(pmi)), length(drawnFrom(pmi, 0)[0] - drawnFrom(pmi, 1)[0]),
                    0.00502);
        const std::string record = PrintToString(read(pmi));
        EXPECT_EQ(record.find("annotation 28 3 1 1, " + plane), 0U) << record;
        EXPECT_EQ(pmi.GetComText().size(), 1U);
        const Ank_Text& value = *pmi.GetComText()[0]->GetTexts().at(0);
        EXPECT_EQ(Vec(value.GetInnerLoc()), Vec(text.point32()));
        EXPECT_NE(record.find("size 1.76776695 2.5 0"), std::string::npos);
        ANK_DIR32 x;
        ANK_DIR32 y;
        value.GetInnerXYAxis(x, y);
        EXPECT_EQ(Vec(x), Vec(0, 1, 0));
        EXPECT_EQ(Vec(y), Vec(1, 0, 0));
    }
}

TEST_P(DistanceTest, OfCoincidentPointsIsZero) {
    Ank_PMI pmi;
    create(GetParam(), {}, {0, 0, 0}, 3.5, pmi);
    EXPECT_EQ(valueText(pmi), L"0.00");
    EXPECT_TRUE(pmi.GetLeaders().empty());
    EXPECT_EQ(pmi.GetExLines().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(All, DistanceTest, testing::ValuesIn(kDistances),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(DistancePair, AxesAndPointToFaceAreAlike) {
    Random random(14);
    const Scene scene = randomScene(random);
    Ank_PMI axes;
    Ank_PMI face;
    create(kDistances[0], scene, {1, 2, 3}, 3.5, axes);
    create(kDistances[3], scene, {1, 2, 3}, 3.5, face);
    EXPECT_EQ(read(axes), read(face));
}

TEST(DistanceUpdate, ReplacesLeadersAndAddsAText) {
    Ank_PMI pmi;
    create(kDistances[0], {{{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 0, 0}, {0, 0, 0}, {5, 0, 0}}},
           {3, 3, 0}, 2.5, pmi);
    double p[3] = {0, 0, 0};
    double q[3] = {0, 3, 4};
    for (const double far : {4.0, 10.0}) {
        q[2] = far;
        int status = 7;
        PMIUpdateDimesion(&pmi, p, q, nullptr, &status);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(pmi.GetLeaders().size(), 2U);
        expectArrow(pmi, 0, Vec(p), {0, 1.5, far / 2});
        expectArrow(pmi, 1, Vec(q), {0, 1.5, far / 2});
        EXPECT_EQ(valueText(pmi), far == 4.0 ? L"5.00" : L"10.44");
        EXPECT_EQ(Vec(pmi.GetComText().back()->GetTexts()[0]->GetInnerLoc()), Vec(0, 1.5, far / 2));
    }
    EXPECT_EQ(pmi.GetComText().size(), 3U);
    EXPECT_EQ(pmi.GetExLines().size(), 2U);
    EXPECT_NE(PrintToString(read(pmi)).rfind("size 2.47487378 3.5 0"), std::string::npos);

    int status = 7;
    PMIUpdateDimesion(&pmi, q, q, nullptr, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(valueText(pmi), L"0.00");
    EXPECT_EQ(leaderPoints(pmi, 1)[0], Vec(q));
}

} // namespace
