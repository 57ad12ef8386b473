#include "generators/assembly.h"

#include <span>

#include "builders/leaders.h"
#include "builders/lines.h"

namespace dorvale {

bool readsBackwards(const TextAxes& text, const AnnotationPlane& plane, const View& view) {
    return dot(plane.directionInModel(widen(text.x)), view.right) < 0.0;
}

const Points& Assembly::pair(Vec3 first, Vec3 second) {
    points_[0] = toPoint32(first);
    points_[1] = toPoint32(second);
    return points_;
}

void Assembly::addLeader(Vec3 tip, Vec3 end, Head head, Stub stub) {
    std::unique_ptr<Ank_Leader> leader =
        makeLeader(pair(tip, end), toPoint32(tip), head == Head::Arrow ? kArrow : kNoTerminator);
    if (!leader) {
        return;
    }
    if (stub == Stub::Yes) {
        leader->SetStubDelta(true);
    }
    leaders_.add(std::move(leader));
}

Vec3 Assembly::addArcLeader(Vec3 center, Vec3 start, Vec3 end, double radius,
                            const std::optional<Vec3>& normal) {
    MadeArc arc = makeArc(
        {toPoint32(center), toPoint32(start), toPoint32(end), static_cast<float>(radius)}, normal);
    leaders_.add(makeArcLeader(std::move(arc.curve)));
    arcLeaders_.at(arcLeaderCount_++) = {leaders_.objects().back(), arc.drawn};
    return widen(arc.normal);
}

void Assembly::setArcTerminators() {
    for (const ArcLeader& half : std::span(arcLeaders_).first(arcLeaderCount_)) {
        if (!setArcTerminator(*half.leader, half.arc)) {
            return;
        }
    }
}

void Assembly::setLeaders() {
    leaders_.handOver([this](const std::vector<Ank_Leader*>& list) { pmi_.SetLeaders(list); });
}

void Assembly::setLeadersIfAny() {
    if (!leaders_.empty()) {
        setLeaders();
    }
}

void Assembly::addExtensionLine(Vec3 from, Vec3 to) {
    extensionLines_.add(makeExtensionLine(pair(from, to), /*display=*/true));
}

void Assembly::setExtensionLinesIfAny() {
    if (!extensionLines_.empty()) {
        extensionLines_.handOver(
            [this](const std::vector<Ank_Extensionline*>& list) { pmi_.SetExLines(list); });
    }
}

void Assembly::addText(std::wstring&& line, Vec3 location, const TextAxes& axes, double height) {
    give(makeTextLine(std::move(line), toPoint32(location), axes, height),
         [this](Ank_ComText* taken) { pmi_.AddComText(taken); });
}

} // namespace dorvale
