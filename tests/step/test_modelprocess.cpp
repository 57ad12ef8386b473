// The process that reads a part and finds its lines, and what becomes of work that takes too long.
#include <cerrno>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "host/step/modelprocess.h"

namespace host::step {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path kPlate = std::filesystem::path(STEP_PARTS) / "plate.stp";
constexpr Vec3 kRight{1, 0, 0};
constexpr Vec3 kUp{0, 1, 0};

bool hasChildren() { return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD; }

/// How long the straight lines of a picture that are seen, and lie on both outer sides of the part,
/// are in all.
double outerLength(const Picture& picture, std::size_t across, double low, double high) {
    double sum = 0;
    for (const PictureEdge& drawn : picture.edges) {
        for (const double side : {low, high}) {
            const Edge& edge = drawn.edge;
            if (!drawn.hidden && edge.kind == CurveKind::Line &&
                std::abs(edge.start[across] - side) < 1e-6 &&
                std::abs(edge.end[across] - side) < 1e-6) {
                sum += length(edge.end - edge.start);
            }
        }
    }
    return sum;
}

TEST(ModelProcess, FindsLinesInTheMeshWhereTheExactOnesTakeTooLong) {
    ModelProcess exact(kPlate, {.exactLines = 60s});
    ModelProcess hasty(kPlate, {.exactLines = 0ms});
    exact.model();
    hasty.model();
    const Picture fine = exact.picture(kRight, kUp);
    const Picture coarse = hasty.picture(kRight, kUp);
    EXPECT_FALSE(fine.fromMesh);
    EXPECT_TRUE(coarse.fromMesh);
    // The plate is 120 wide and 80 deep: its outline is the same in both.
    for (const Picture* picture : {&fine, &coarse}) {
        EXPECT_NEAR(outerLength(*picture, 0, 0, 120), 160, 1e-6);
        EXPECT_NEAR(outerLength(*picture, 1, 0, 80), 240, 1e-6);
    }
    // Giving up the lines ends neither the process nor what it is asked next.
    EXPECT_FALSE(hasty.body().edges.empty());
}

TEST(ModelProcess, EndsWithItsTimeAndLeavesNothingBehind) {
    {
        ModelProcess late(kPlate, {.time = 0s});
        try {
            late.model();
            ADD_FAILURE() << "it was in time";
        } catch (const StepError& error) {
            EXPECT_STREQ(error.what(), "cannot be read within 0 s");
        }
        EXPECT_FALSE(hasChildren());
        EXPECT_THROW(late.picture(kRight, kUp), StepError);
    }
    // One that is given up while it works ends with its owner.
    { const ModelProcess unasked(kPlate, {}); }
    EXPECT_FALSE(hasChildren());
}

} // namespace
} // namespace host::step
