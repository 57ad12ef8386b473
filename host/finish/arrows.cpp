#include "host/finish/arrows.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "host/finish/leaders.h"
#include "host/geometry/vectors.h"

namespace host {
namespace {

struct Arrow {
    ANK_PNT32 tip;
    ANK_DIR32 direction;
};

/// Nothing for a leader without a head.
std::optional<Arrow> arrowOf(const Ank_Leader& leader) {
    AnkTermTypeEnum type{};
    float size[2] = {};
    Arrow arrow;
    leader.GetTerminator(type, size, arrow.tip, arrow.direction);
    return type == ANK_TERM_ARROW ? std::optional(arrow) : std::nullopt;
}

/// From an arc's start along the chord of this length; of the diameter where the chord is longer.
ANK_DIR32 alongChord(const ArcLeader& arc, double chord) {
    const double turn = 2 * std::asin(std::clamp(chord / (2 * arc.radius), 0.0, 1.0));
    const Vec3 direction = unit(arc.at(std::copysign(turn, arc.sweep)) - arc.at(0));
    return {static_cast<float>(direction[0]), static_cast<float>(direction[1]),
            static_cast<float>(direction[2])};
}

double distanceOf(const ANK_PNT32& a, const ANK_PNT32& b) {
    return length(vectorOf(a) - vectorOf(b));
}

} // namespace

void setArrows(Ank_PMI& pmi, double length) {
    for (Ank_Leader* leader : pmi.GetLeaders()) {
        std::optional<Arrow> arrow = arrowOf(*leader);
        if (!arrow) {
            continue;
        }
        if (const auto arc = arcLeaderOf(*leader); arc && arc->radius > 0) {
            arrow->direction = alongChord(*arc, length);
        }
        float size[2] = {static_cast<float>(length), static_cast<float>(length / 3)};
        leader->SetTerminator(ANK_TERM_ARROW, size, arrow->tip, arrow->direction);
    }
}

double fittingArrow(const Ank_PMI& pmi, double textHeight) {
    constexpr double kOfTextHeight = 0.96;
    double fitting = kOfTextHeight * textHeight;
    std::vector<ANK_PNT32> tips;
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        if (const auto arrow = arrowOf(*leader)) {
            fitting = std::min(fitting, lengthOf(*leader) / 3);
            for (const ANK_PNT32& tip : tips) {
                fitting = std::min(fitting, distanceOf(tip, arrow->tip) / 3);
            }
            tips.push_back(arrow->tip);
        }
    }
    return fitting;
}

} // namespace host
