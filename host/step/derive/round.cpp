// Diameters, radii and lengths of arcs.
#include <algorithm>

#include "host/step/derive/derive.h"

namespace host::step {
namespace {

constexpr double kSameRadius = 1e-3;

/// A circle that a face or an edge offers, and where it belongs: circles on one axis are one place.
struct Offer {
    Circle circle;
    Vec3 axisPoint{};
    bool hollow = false;
};

Circle circleOf(const Edge& edge) {
    Circle circle{edge.centre, edge.axis, edge.radius, edge.start, edge.end};
    if (edge.closed()) {
        circle.end = circle.start;
    }
    return circle;
}

/// Any vector square to an axis, of its length.
Vec3 squareTo(const Vec3& axis) {
    const Vec3 helper = std::abs(axis[0]) < 0.6 ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    return unit(cross(axis, helper));
}

Circle fullCircle(const Vec3& centre, const Vec3& axis, double radius) {
    const Vec3 start = centre + radius * squareTo(axis);
    return {centre, axis, radius, start, start};
}

/// The circular edges of a face about its axis.
void offerRims(const Face& face, std::vector<Offer>& offers) {
    for (const Edge& edge : face.edges) {
        if (edge.kind == CurveKind::Circle && parallel(edge.axis, face.axis)) {
            offers.push_back({circleOf(edge), face.origin, face.hollow});
        }
    }
}

void offerCylinder(const Face& face, std::vector<Offer>& offers) {
    const std::size_t before = offers.size();
    offerRims(face, offers);
    if (offers.size() > before || face.points.empty()) {
        return;
    }
    // Its rims are no circles: a section in its middle.
    const Range range = rangeAlong(face.points, face.axis);
    const Vec3 centre = face.origin + (range.middle() - dot(face.origin, face.axis)) * face.axis;
    offers.push_back({fullCircle(centre, face.axis, face.radius), face.origin, face.hollow});
}

void offerSphere(const Face& face, std::vector<Offer>& offers) {
    Circle equator = fullCircle(face.origin, {0, 0, 1}, face.radius);
    equator.anyAxis = true;
    offers.push_back({equator, face.origin, face.hollow});
}

/// The section of a torus, at an end where it has one, and the circles about its axis.
void offerTorus(const Face& face, std::vector<Offer>& offers) {
    bool hasSection = false;
    for (const Edge& edge : face.edges) {
        if (edge.kind == CurveKind::Circle &&
            std::abs(edge.radius - face.minorRadius) < kSameRadius &&
            !parallel(edge.axis, face.axis)) {
            offers.push_back({circleOf(edge), edge.centre, face.hollow});
            hasSection = true;
        }
    }
    if (!hasSection && face.section.kind == CurveKind::Circle) {
        offers.push_back({circleOf(face.section), face.section.centre, face.hollow});
    }
    for (const double radius :
         {face.radius, face.radius + face.minorRadius, face.radius - face.minorRadius}) {
        offers.push_back({fullCircle(face.origin, face.axis, radius), face.origin, face.hollow});
    }
}

std::vector<Offer> offersOf(const Feature& feature) {
    std::vector<Offer> offers;
    for (const Face& face : feature.faces) {
        switch (face.kind) {
        case SurfaceKind::Cylinder:
            offerCylinder(face, offers);
            break;
        case SurfaceKind::Cone:
            offerRims(face, offers);
            break;
        case SurfaceKind::Sphere:
            offerSphere(face, offers);
            break;
        case SurfaceKind::Torus:
            offerTorus(face, offers);
            break;
        case SurfaceKind::Plane:
        case SurfaceKind::Other:
            for (const Edge& edge : face.edges) {
                if (edge.kind == CurveKind::Circle) {
                    offers.push_back({circleOf(edge), edge.centre, false});
                }
            }
            break;
        }
    }
    for (const Edge& edge : feature.edges) {
        if (edge.kind == CurveKind::Circle) {
            offers.push_back({circleOf(edge), edge.centre, false});
        }
    }
    return offers;
}

bool onSameAxis(const Offer& a, const Offer& b) {
    if (a.circle.anyAxis || b.circle.anyAxis) {
        return length(a.circle.centre - b.circle.centre) < kSameRadius;
    }
    return parallel(a.circle.axis, b.circle.axis) &&
           length(offsetFromLine(b.circle.centre, a.circle.centre, a.circle.axis)) < kSameRadius;
}

/// How many different axes there are. Of faces of several kinds, as fillets that run round corners
/// have, nobody would count the places.
int placesOf(const Feature& feature, const std::vector<Offer>& offers) {
    constexpr std::size_t kMost = 2000;
    const auto differs = [&](const Face& face) { return face.kind != feature.faces.front().kind; };
    if (std::any_of(feature.faces.begin(), feature.faces.end(), differs)) {
        return 1;
    }
    std::vector<const Offer*> different;
    for (const Offer& offer : offers) {
        const bool known = std::any_of(different.begin(), different.end(), [&](const Offer* other) {
            return onSameAxis(*other, offer);
        });
        if (!known && different.size() < kMost) {
            different.push_back(&offer);
        }
    }
    return static_cast<int>(different.size());
}

/// Halves of one circle are joined: what a full turn covers is drawn as a full circle.
void addCircle(std::vector<Circle>& circles, const Circle& circle) {
    for (Circle& known : circles) {
        const bool same = length(known.centre - circle.centre) < kSameRadius &&
                          parallel(known.axis, circle.axis) &&
                          std::abs(known.radius - circle.radius) < kSameRadius;
        if (!same) {
            continue;
        }
        const bool meet = dot(known.axis, circle.axis) > 0
                              ? length(known.start - circle.end) < kSameRadius &&
                                    length(known.end - circle.start) < kSameRadius
                              : length(known.start - circle.start) < kSameRadius &&
                                    length(known.end - circle.end) < kSameRadius;
        if (meet || length(circle.start - circle.end) == 0) {
            known.end = known.start;
        }
        return;
    }
    circles.push_back(circle);
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

Geometry geometryOf(const Dimension& dimension, Shown shown, double radius,
                    const std::vector<Offer>& offers) {
    std::vector<Offer> alike;
    for (const Offer& offer : offers) {
        if (std::abs(offer.circle.radius - radius) <= 1e-6 * radius + 1e-9) {
            alike.push_back(offer);
        }
    }
    Geometry geometry;
    geometry.shown = shown;
    geometry.measured = (shown == Shown::Diameter ? 2 : 1) * radius / dimension.unitSize;
    geometry.places = placesOf(dimension.first, alike);
    for (const Offer& offer : alike) {
        addCircle(geometry.circles, offer.circle);
    }
    return geometry;
}

} // namespace

std::optional<Geometry> deriveRound(const Dimension& dimension) {
    const bool isDiameter = contains(dimension.name, "diameter");
    const bool isRadius = contains(dimension.name, "radius");
    if (!isDiameter && !isRadius) {
        return std::nullopt;
    }
    const Shown shown = isDiameter ? Shown::Diameter : Shown::Radius;
    const std::vector<Offer> offers = offersOf(dimension.first);
    const Offer* chosen = nullptr;
    for (const Offer& offer : offers) {
        const double measured = (isDiameter ? 2 : 1) * offer.circle.radius / dimension.unitSize;
        if (agrees(dimension, measured)) {
            chosen = &offer;
            break;
        }
    }
    if (chosen == nullptr && !offers.empty()) {
        chosen = &offers.front();
    }
    if (chosen == nullptr) {
        return std::nullopt;
    }
    return geometryOf(dimension, shown, chosen->circle.radius, offers);
}

std::optional<Geometry> deriveArcLength(const Dimension& dimension) {
    std::vector<Edge> edges = dimension.first.edges;
    for (const Face& face : dimension.first.faces) {
        edges.insert(edges.end(), face.edges.begin(), face.edges.end());
    }
    std::optional<Geometry> best;
    for (const Edge& edge : edges) {
        if (edge.kind != CurveKind::Circle) {
            continue;
        }
        Geometry geometry;
        geometry.shown = Shown::ArcLength;
        geometry.measured = edge.length / dimension.unitSize;
        geometry.circles.push_back(circleOf(edge));
        if (agrees(dimension, *geometry.measured)) {
            return geometry;
        }
        if (!best) {
            best = std::move(geometry);
        }
    }
    return best;
}

} // namespace host::step
