// Radius and diameter of a circle.
#include "generators/assembly.h"
#include "generators/kindcode.h"
#include "geometry/definitionplane.h"
#include "model/values.h"
#include "valuetext/valueline.h"

using namespace dorvale;

namespace {

constexpr Vec3 kPlaneX{1.0, 0.0, 0.0};
/// Outside the circle the text stands along the plane's X axis, its up direction mirrored.
TextAxes outsideText() { return {direction32(1.0F, 0.0F, 0.0F), direction32(0.0F, -1.0F, 0.0F)}; }

/// A circle and the placement of its text, in the circle's plane:
///
///     far ---- center ---- near --- placed
struct PlacedCircle {
    AnnotationPlane plane;
    Vec3 center;
    double radius;
    Vec3 placed;
    /// From the centre towards the placement; the plane's X axis where both coincide.
    Vec3 direction;
    double distance;
    Vec3 near;

    PlacedCircle(const Arc& arc, _ank_locate& locate, const View& view)
        : plane(planeOfArc(arc, view.towardsViewer).plane()), center(plane.toPlane(arc.center)),
          radius(arc.radius), placed(plane.place(locate)),
          direction(unit(placed - center).value_or(kPlaneX)),
          distance(dorvale::distance(placed, center)), near(moved(center, direction, radius)) {}

    bool holdsPlacement() const { return radius > distance; }
};

/// The text of a radius: one line without font, spacing or box.
void addRadiusText(std::wstring line, const PlacedCircle& circle, const TextAxes& axes,
                   double height, Ank_PMI& pmi) {
    auto text = std::make_unique<Ank_Text>();
    const CharSize size = charSizeOf(textHeightOr(height));
    text->SetInnerLoc(toPoint32(circle.placed));
    text->SetText(std::move(line));
    text->SetInnerXYAxis(axes.x, axes.y);
    text->SetCharWidthHeight(static_cast<float>(size.width), static_cast<float>(size.height));
    PendingList<Ank_Text> texts(1);
    texts.add(std::move(text));
    auto block = std::make_unique<Ank_ComText>();
    texts.handOver([&](const std::vector<Ank_Text*>& list) { block->SetTexts(list); });
    block->SetOuterBox({});
    give(std::move(block), [&](Ank_ComText* taken) { pmi.AddComText(taken); });
}

} // namespace

void PMICreateDiameterDim3D(int* kindCode, Ank_CurveEntity* curve, _ank_locate* locate,
                            int* /*unused*/, double textHeight, Ank_PMI* pmi, int* /*status*/,
                            double* viewMatrix) {
    if (!isKnownKind(kindCode)) {
        return;
    }
    const View view = View::fromMatrix(viewMatrix);
    const PlacedCircle circle(arcOf(curve), *locate, view);
    pmi->SetDefPlane(circle.plane.matrix32());
    const bool inside = circle.holdsPlacement();
    const Vec3 far = inside
                         ? moved(circle.near, -circle.direction, 2.0 * circle.radius)
                         : moved(circle.placed, -circle.direction, circle.distance + circle.radius);
    Assembly assembly(*pmi);
    assembly.addLeader(circle.near, circle.placed);
    assembly.setLeaders();
    assembly.addLeader(far, circle.placed, Head::Arrow, inside ? Stub::No : Stub::Yes);
    assembly.setLeaders();

    const TextAxes text =
        readable(inside ? textAlong(circle.direction) : outsideText(), circle.plane, view);
    constexpr std::wstring_view kDiameterSign = L"\u2300";
    assembly.addText(lengthLine(2.0 * circle.radius, kDiameterSign), circle.placed, text,
                     textHeight);
    pmi->SetType(kDiameterDimension);
    pmi->SetParallelScreen(true);
    pmi->SetDisplay(true);
    pmi->SetDim(3);
}

void PMICreateRadiusDim3D(int* kindCode, Ank_CurveEntity* curve, _ank_locate* locate,
                          int* /*unused*/, double textHeight, Ank_PMI* pmi, int* /*status*/,
                          double* viewMatrix) {
    if (!isKnownKind(kindCode)) {
        return;
    }
    const View view = View::fromMatrix(viewMatrix);
    const PlacedCircle circle(arcOf(curve), *locate, view);
    pmi->SetDefPlane(circle.plane.matrix32());
    Assembly assembly(*pmi);
    TextAxes text = outsideText();
    if (circle.holdsPlacement()) {
        assembly.addLeader(circle.near, circle.placed);
        assembly.setLeaders();
        assembly.addLeader(circle.center, circle.placed, Head::None);
        assembly.setLeaders();
        text = textAlong(orZero(unit(circle.placed - circle.near)));
    } else if (circle.distance > circle.radius) {
        // On the circle itself there is nothing to lead to.
        assembly.addLeader(circle.near, circle.placed, Head::Arrow, Stub::Yes);
        assembly.setLeaders();
    }
    if (std::optional<std::wstring> line = lengthLine(circle.radius, L"R")) {
        addRadiusText(std::move(*line), circle, readable(text, circle.plane, view), textHeight,
                      *pmi);
    }
    pmi->SetType(kRadiusDimension);
    pmi->SetDisplay(true);
    pmi->SetDim(3);
    pmi->SetParallelScreen(true);
}
