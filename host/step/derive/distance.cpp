// Distances: of planes, axes, edges and points from each other, across a feature, along an edge,
// and from a floor to the face that it lies below.
#include <algorithm>

#include "host/step/derive/derive.h"

namespace host::step {
namespace {

/// Combinations of elements that are tried: patterns of patterns need no more.
constexpr std::size_t kMostElements = 64;
/// In millimetres: planes this near are one.
constexpr double kNoDistance = 1e-6;
constexpr Vec3 kPrincipal[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// A way to read two elements as a distance.
struct Reading {
    Vec3 direction;
    std::array<Vec3, 2> ends;
};

double valueOf(const Reading& reading) {
    return std::abs(dot(reading.ends[1] - reading.ends[0], reading.direction));
}

/// Reads a distance of two elements in every way that makes sense, the plainest first.
class Readings {
public:
    Readings(const Element& a, const Element& b) : a_(a), b_(b) {
        if (a.kind == ElementKind::Plane || b.kind == ElementKind::Plane) {
            fromPlanes();
        } else {
            fromLinesAndPoints();
        }
    }
    const std::vector<Reading>& all() const { return all_; }

private:
    void add(const Vec3& direction, const Vec3& a, const Vec3& b) {
        const Vec3 along = unit(direction);
        if (length(along) > 0) {
            all_.push_back({along, {a, b}});
        }
    }

    /// The same, and measured to the near and the far side of what is round.
    void addWithRadii(const Vec3& direction, const Vec3& a, const Vec3& b) {
        const Vec3 along = unit(direction);
        add(along, a, b);
        for (const double first : {0.0, 1.0, -1.0}) {
            for (const double second : {0.0, 1.0, -1.0}) {
                if ((first != 0 && a_.radius > 0) || (second != 0 && b_.radius > 0)) {
                    add(along, a + first * a_.radius * along, b + second * b_.radius * along);
                }
            }
        }
    }

    void fromPlanes() {
        for (const Element* plane : {&a_, &b_}) {
            if (plane->kind != ElementKind::Plane) {
                continue;
            }
            const Element& other = plane == &a_ ? b_ : a_;
            if (isAtOneDepth(other, plane->direction)) {
                addWithRadii(plane->direction, a_.point, b_.point);
            } else {
                addExtremes(*plane, other);
            }
        }
    }

    static bool isAtOneDepth(const Element& element, const Vec3& normal) {
        switch (element.kind) {
        case ElementKind::Plane:
            return parallel(element.direction, normal);
        case ElementKind::Point:
            return true;
        case ElementKind::Axis:
        case ElementKind::Line:
            return square(element.direction, normal);
        }
        return false;
    }

    /// To the nearest and the farthest point of what stands oblique, and to an axis' own point.
    void addExtremes(const Element& plane, const Element& other) {
        if (other.kind == ElementKind::Axis) {
            addOrdered(plane, other.point, other);
        }
        if (other.reach.empty()) {
            return;
        }
        const auto [near, far] = std::minmax_element(
            other.reach.begin(), other.reach.end(), [&](const Vec3& p, const Vec3& q) {
                return std::abs(dot(p - plane.point, plane.direction)) <
                       std::abs(dot(q - plane.point, plane.direction));
            });
        addOrdered(plane, *far, other);
        addOrdered(plane, *near, other);
    }

    void addOrdered(const Element& plane, const Vec3& point, const Element& other) {
        if (&other == &b_) {
            add(plane.direction, plane.point, point);
        } else {
            add(plane.direction, point, plane.point);
        }
    }

    void fromLinesAndPoints() {
        const bool aIsLong = a_.kind != ElementKind::Point;
        const bool bIsLong = b_.kind != ElementKind::Point;
        const Vec3 apart = b_.point - a_.point;
        if (aIsLong && bIsLong && !parallel(a_.direction, b_.direction)) {
            addWithRadii(cross(a_.direction, b_.direction), a_.point, b_.point);
        } else if (aIsLong) {
            addWithRadii(offsetFromLine(b_.point, a_.point, a_.direction), a_.point, b_.point);
        } else if (bIsLong) {
            addWithRadii(offsetFromLine(a_.point, b_.point, b_.direction), a_.point, b_.point);
        } else {
            addWithRadii(apart, a_.point, b_.point);
        }
        // Along an axis both lie on, from circle to circle, and along the principal directions.
        if (aIsLong) {
            add(a_.direction, a_.point, b_.point);
        }
        addWithRadii(apart, a_.point, b_.point);
        for (const Vec3& direction : kPrincipal) {
            addWithRadii(direction, a_.point, b_.point);
        }
    }

    const Element& a_;
    const Element& b_;
    std::vector<Reading> all_;
};

Side sideOf(const Element& element, const Vec3& end) {
    Side side{end, element.reach, {}};
    if (element.kind == ElementKind::Axis) {
        side.axis = element.direction;
    }
    return side;
}

Geometry geometryOf(const Dimension& dimension, const Reading& reading, const Element& a,
                    const Element& b) {
    Geometry geometry;
    const bool toPoint = a.kind == ElementKind::Plane && b.kind == ElementKind::Point;
    const bool fromPoint = b.kind == ElementKind::Plane && a.kind == ElementKind::Point;
    geometry.shown = toPoint || fromPoint ? Shown::PointDistance : Shown::Distance;
    geometry.direction = reading.direction;
    geometry.sides[fromPoint ? 1 : 0] = sideOf(a, reading.ends[0]);
    geometry.sides[fromPoint ? 0 : 1] = sideOf(b, reading.ends[1]);
    geometry.measured = valueOf(reading) / dimension.unitSize;
    return geometry;
}

/// Keeps the first geometry that agrees with the nominal; until then, the first one.
class Best {
public:
    explicit Best(const Dimension& dimension) : dimension_(dimension) {}

    bool found() const { return agreeing_; }
    void tryPair(const Element& a, const Element& b) {
        const Readings readings(a, b);
        for (const Reading& reading : readings.all()) {
            const double measured = valueOf(reading) / dimension_.unitSize;
            const bool agreeing = agrees(dimension_, measured);
            if (agreeing_ || (best_ && !agreeing)) {
                continue;
            }
            agreeing_ = agreeing;
            best_ = geometryOf(dimension_, reading, a, b);
        }
    }
    std::optional<Geometry> take() { return std::move(best_); }

private:
    const Dimension& dimension_;
    std::optional<Geometry> best_;
    bool agreeing_ = false;
};

std::vector<Element> limited(std::vector<Element> elements) {
    elements.resize(std::min(elements.size(), kMostElements));
    return elements;
}

std::optional<Geometry> betweenFeatures(const Dimension& dimension) {
    Best best(dimension);
    const std::vector<Element> first = limited(elementsOf(dimension.first));
    const std::vector<Element> second = limited(elementsOf(dimension.second));
    for (const Element& a : first) {
        for (const Element& b : second) {
            if (!best.found()) {
                best.tryPair(a, b);
            }
        }
    }
    return best.take();
}

/// Across a feature, as a thickness or the width of a slot: two of its planes that face each other
/// or turn their backs on each other, or whatever else it has two of.
std::optional<Geometry> acrossFeature(const Dimension& dimension) {
    Best best(dimension);
    const std::vector<Element> elements = limited(elementsOf(dimension.first));
    for (const bool facing : {true, false}) {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            for (std::size_t j = i + 1; j < elements.size() && !best.found(); ++j) {
                const bool opposite = elements[i].kind == ElementKind::Plane &&
                                      elements[j].kind == ElementKind::Plane &&
                                      dot(elements[i].direction, elements[j].direction) < -0.5;
                if (opposite == facing) {
                    best.tryPair(elements[i], elements[j]);
                }
            }
        }
    }
    return best.take();
}

/// A point of a feature, as an element of its own.
Element endAt(const Element& whole, const Vec3& point) {
    return {ElementKind::Point, point, {}, 0, {point}, whole.part};
}

/// From one end of a straight edge, or of what turns about an axis, to the other.
std::optional<Geometry> alongFeature(const Dimension& dimension) {
    Best best(dimension);
    for (const Element& element : limited(elementsOf(dimension.first))) {
        const bool isLong = element.kind == ElementKind::Line || element.kind == ElementKind::Axis;
        if (!isLong || element.reach.empty() || best.found()) {
            continue;
        }
        const Range range = rangeAlong(element.reach, element.direction);
        const double at = dot(element.point, element.direction);
        best.tryPair(endAt(element, element.point + (range.low - at) * element.direction),
                     endAt(element, element.point + (range.high - at) * element.direction));
    }
    return best.take();
}

/// A depth that names its floor alone was measured to the outermost parallel face on the side that
/// the floor looks to. Where there is none the face is the outermost one itself, and the depth goes
/// through the material: to the nearest face that looks the other way.
const Face* oppositeOf(const Element& floor, const std::vector<Face>& planes) {
    const double here = dot(floor.point, floor.direction);
    const Face* outermost = nullptr;
    const Face* behind = nullptr;
    double reach = here + kNoDistance;
    double back = -HUGE_VAL;
    for (const Face& plane : planes) {
        if (plane.part != floor.part || !parallel(plane.axis, floor.direction)) {
            continue;
        }
        const double at = dot(plane.origin, floor.direction);
        if (at > reach) {
            reach = at;
            outermost = &plane;
        } else if (at < here - kNoDistance && at > back && dot(plane.axis, floor.direction) < 0) {
            back = at;
            behind = &plane;
        }
    }
    return outermost != nullptr ? outermost : behind;
}

std::optional<Geometry> fromFloor(const Dimension& dimension, const Model& model) {
    const std::vector<Element> elements = elementsOf(dimension.first);
    if (elements.size() != 1 || elements.front().kind != ElementKind::Plane) {
        return std::nullopt;
    }
    const Element& floor = elements.front();
    const Face* face = oppositeOf(floor, model.planes);
    if (face == nullptr) {
        return std::nullopt;
    }
    Feature opposite;
    opposite.faces.push_back(*face);
    Best best(dimension);
    best.tryPair(floor, elementsOf(opposite).front());
    return best.take();
}

} // namespace

std::optional<Geometry> deriveDistance(const Dimension& dimension, const Model& model) {
    std::optional<Geometry> best;
    const auto keep = [&](std::optional<Geometry> way) {
        if (way &&
            (!best || (!agrees(dimension, *best->measured) && agrees(dimension, *way->measured)))) {
            best = std::move(way);
        }
    };
    if (!dimension.second.empty() && !dimension.first.empty()) {
        keep(betweenFeatures(dimension));
        // Two faces of one floor: what it is measured to is not named.
        if (best && *best->measured * dimension.unitSize < kNoDistance) {
            best.reset();
            keep(fromFloor(dimension, model));
        }
        return best;
    }
    Dimension only = dimension;
    if (only.first.empty()) {
        std::swap(only.first, only.second);
    }
    keep(acrossFeature(only));
    keep(alongFeature(only));
    keep(fromFloor(only, model));
    return best;
}

} // namespace host::step
