// Putting an annotation together: what every generator does alike.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "builders/curves.h"
#include "builders/ownership.h"
#include "builders/text.h"
#include "geometry/plane.h"

namespace dorvale {

/// Text that runs along a direction of the plane.
inline TextAxes textAlong(Vec3 direction) {
    return {toDirection32(flat(direction)), toDirection32(quarterTurn(direction))};
}

/// Text on a circle, standing on the tangent: upwards it has the direction from the centre.
inline TextAxes textOnCircle(Vec3 fromCenter) {
    return {toDirection32(quarterTurn(fromCenter)), toDirection32(flat(fromCenter))};
}

/// Whether text would run against the view's first axis; without a view it never does.
bool readsBackwards(const TextAxes& text, const AnnotationPlane& plane, const View& view);

/// The text's axes, reversed where it would read backwards.
inline TextAxes readable(const TextAxes& text, const AnnotationPlane& plane, const View& view) {
    return readsBackwards(text, plane, view) ? text.reversed() : text;
}

enum class Stub { No, Yes };
enum class Head { None, Arrow };

/// The elements of one annotation on their way to it. What has not been handed over yet is deleted
/// with the assembly.
class Assembly {
public:
    explicit Assembly(Ank_PMI& pmi) : pmi_(pmi) {}

    /// A straight leader with its terminator at `tip`; left out where both points are equal.
    void addLeader(Vec3 tip, Vec3 end, Head head = Head::Arrow, Stub stub = Stub::No);
    /// An arc leader, of at most two, that still has no arrow. Returns its normal: the given one if
    /// that counts.
    Vec3 addArcLeader(Vec3 center, Vec3 start, Vec3 end, double radius,
                      const std::optional<Vec3>& normal = std::nullopt);
    /// Puts an arrow on each arc leader; the first arc whose parameters are equal ends the pass.
    void setArcTerminators();
    /// Hands over all leaders so far; again when the list has grown.
    void setLeaders();
    void setLeadersIfAny();

    void addExtensionLine(Vec3 from, Vec3 to);
    void setExtensionLinesIfAny();

    /// A block of one line at the location.
    void addText(std::wstring&& line, Vec3 location, const TextAxes& axes, double height);
    /// The same; none for a value that cannot be shown.
    void addText(std::optional<std::wstring>&& line, Vec3 location, const TextAxes& axes,
                 double height) {
        if (line) {
            addText(std::move(*line), location, axes, height);
        }
    }

private:
    struct ArcLeader {
        Ank_Leader* leader = nullptr;
        DrawnArc arc;
    };

    const Points& pair(Vec3 first, Vec3 second);

    Ank_PMI& pmi_;
    PendingList<Ank_Leader> leaders_;
    /// The two halves of a dimension arc.
    std::array<ArcLeader, 2> arcLeaders_{};
    std::size_t arcLeaderCount_ = 0;
    PendingList<Ank_Extensionline> extensionLines_;
    Points points_ = Points(2);
};

} // namespace dorvale
