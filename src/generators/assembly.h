// Putting an annotation together: what every generator does alike.
#pragma once

#include <optional>
#include <string>

#include "builders/curves.h"
#include "builders/ownership.h"
#include "builders/text.h"
#include "geometry/plane.h"

namespace dorvale {

/// Text directions in a plane. They may be a mirrored pair.
struct TextDirections {
    Vec3 x;
    Vec3 y;

    TextDirections reversed() const { return {-x, -y}; }
    TextAxes axes() const { return {toDirection32(x), toDirection32(y)}; }
};

/// Upwards the radius, along it the tangent: text on a circle, seen from its centre.
inline TextDirections alongTangent(Vec3 radius) { return {quarterTurn(radius), flat(radius)}; }

/// Text that runs along a direction.
inline TextDirections alongDirection(Vec3 direction) {
    return {flat(direction), quarterTurn(direction)};
}

/// The same directions, reversed where the text would run against the view's first axis. Without a
/// view nothing is reversed.
bool readsBackwards(Vec3 textX, const AnnotationPlane& plane, const View& view);

enum class Stub { No, Yes };
enum class Head { None, Arrow };

/// The elements of one annotation on their way to it. What has not been handed over yet is deleted
/// with the assembly.
class Assembly {
public:
    explicit Assembly(Ank_PMI& pmi) : pmi_(pmi) {}

    /// A straight leader with its terminator at `tip`; left out where both points are equal.
    void addLeader(Vec3 tip, Vec3 end, Head head = Head::Arrow, Stub stub = Stub::No);
    /// An arc leader that still has no arrow.
    void addArcLeader(Vec3 center, Vec3 start, Vec3 end, double radius,
                      const std::optional<Vec3>& normal = std::nullopt);
    void setArcTerminators();
    /// Hands over all leaders so far; again when the list has grown.
    void setLeaders();
    void setLeadersIfAny();

    void addExtensionLine(Vec3 from, Vec3 to);
    void setExtensionLinesIfAny();

    /// A block of one line at the location; none for a value that cannot be shown.
    void addText(std::optional<std::wstring> line, Vec3 location, const TextAxes& axes,
                 double height);

private:
    const Points& pair(Vec3 first, Vec3 second);

    Ank_PMI& pmi_;
    PendingList<Ank_Leader> leaders_;
    PendingList<Ank_Extensionline> extensionLines_;
    Points points_ = Points(2);
};

/// Hands an object over by a member that appends to the annotation.
template <typename T>
void handOver(Ank_PMI& pmi, void (Ank_PMI::*adder)(T*), std::unique_ptr<T> object) {
    (pmi.*adder)(object.get());
    static_cast<void>(object.release());
}

} // namespace dorvale
