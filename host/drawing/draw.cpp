#include "host/drawing/draw.h"

#include <cmath>

#include "host/drawing/projection.h"
#include "host/drawing/svg.h"
#include "host/drawing/text.h"
#include "host/geometry/arcs.h"
#include "host/scene/build.h"

namespace host {
namespace {

void addEdge(Path& path, const LineEdge& line, const Projection& toPaper) {
    path.moveTo(toPaper.point(line.start));
    path.lineTo(toPaper.point(line.end));
}

void addEdge(Path& path, const ArcEdge& arc, const Projection& toPaper) {
    const Vec3 x = arc.radius * unit(arc.start - arc.center);
    const Vec3 y = cross(unit(arc.normal), x);
    path.arc(toPaper.point(arc.center), toPaper.offset(x), toPaper.offset(y), 0,
             sweepTo(arc.end - arc.center, x, y));
}

void drawEdge(Svg& svg, const ModelEdge& edge, const Projection& toPaper) {
    if (edge.hidden) {
        svg.useHiddenEdges();
    }
    Path path;
    std::visit([&](const auto& shape) { addEdge(path, shape, toPaper); }, edge.edge);
    const std::string id = edge.id.empty() ? "" : " data-id=\"" + xmlText(edge.id) + '"';
    svg.path(edge.hidden ? "edge hidden" : "edge", path, id);
}

void drawModel(Svg& svg, const Scene& scene) {
    const Projection toPaper(scene.view());
    svg.open("model");
    // Hidden edges first: a visible one in the same place covers them.
    for (const bool hidden : {true, false}) {
        for (const ModelEdge& edge : scene.edges()) {
            if (edge.hidden == hidden) {
                drawEdge(svg, edge, toPaper);
            }
        }
    }
    svg.close();
}

void addPoints(Path& path, const std::vector<ANK_PNT32>& points, const Projection& toPaper) {
    for (const ANK_PNT32& p : points) {
        if (&p == points.data()) {
            path.moveTo(toPaper.point(vectorOf(p)));
        } else {
            path.lineTo(toPaper.point(vectorOf(p)));
        }
    }
}

/// An arc's parameters are angles from the plane's X axis.
void addArc(Path& path, const Ank_Ellipse& arc, const Projection& toPaper) {
    float first = 0;
    float second = 0;
    arc.GetRadius(first, second);
    float start = 0;
    float end = 0;
    arc.GetParameter(start, end);
    if (start == end) {
        return;
    }
    const double from = start;
    path.arc(toPaper.point(vectorOf(arc.GetCenterPoint())), toPaper.offset({first, 0, 0}),
             toPaper.offset({0, second, 0}), from, from + sweepOf(arc));
}

/// Draws a curve that is shown.
void drawCurve(Svg& svg, const std::string& className, const Ank_CurveEntity& curve,
               const Projection& toPaper) {
    if (!curve.GetCurveDispStat()) {
        return;
    }
    Path path;
    if (const auto* polyline = dynamic_cast<const Ank_PolyLine*>(&curve)) {
        addPoints(path, polyline->GetPoints(), toPaper);
    } else if (const auto* line = dynamic_cast<const Ank_Line*>(&curve)) {
        addPoints(path, {line->GetStartPoint(), line->GetEndPoint()}, toPaper);
    } else if (const auto* arc = dynamic_cast<const Ank_Ellipse*>(&curve)) {
        addArc(path, *arc, toPaper);
    }
    svg.path(className, path);
}

/// An arrow head is a cone: on paper a triangle as wide as the cone, from its tip to as much of its
/// length as the view shows.
void drawArrow(Svg& svg, const Ank_Leader& leader, const Projection& toPaper) {
    AnkTermTypeEnum type{};
    float size[2] = {};
    ANK_PNT32 location;
    ANK_DIR32 direction;
    leader.GetTerminator(type, size, location, direction);
    if (type != ANK_TERM_ARROW) {
        return;
    }
    const Vec2 tip = toPaper.point(vectorOf(location));
    const Vec2 along = toPaper.offset(vectorOf(direction));
    if (!(length(along) > 0)) {
        return;
    }
    const Vec2 base = tip + static_cast<double>(size[0]) * along;
    const double halfWidth = 0.5 * static_cast<double>(size[1]) * toPaper.scale();
    const Vec2 aside = halfWidth / length(along) * Vec2{-along.y, along.x};
    Path path;
    path.moveTo(tip);
    path.lineTo(base + aside);
    path.lineTo(base - aside);
    path.close();
    svg.path("arrow", path);
}

void drawLeader(Svg& svg, const Ank_Leader& leader, const Projection& toPaper) {
    svg.open("leader", leader.GetStubDelta() ? " data-stub=\"true\"" : "");
    for (const Ank_CurveEntity* curve : leader.GetAllCurve()) {
        drawCurve(svg, "curve", *curve, toPaper);
    }
    drawArrow(svg, leader, toPaper);
    svg.close();
}

void drawCallerLine(Svg& svg, const LineEdge& line, const Projection& toPaper) {
    Path path;
    addEdge(path, line, toPaper);
    svg.path("special", path, " data-source=\"caller\"");
}

void drawDisplayed(Svg& svg, const BuiltAnnotation& built, const Matrix& view) {
    const Ank_PMI& pmi = built.pmi;
    const Projection toPaper(pmi.GetDefPlane(), view);
    const std::string name = built.name.empty() ? "" : " data-name=\"" + xmlText(built.name) + '"';
    svg.open("annotation", name + " data-type=\"" + std::to_string(pmi.GetType()) + '"');
    for (const Ank_Extensionline* line : pmi.GetExLines()) {
        if (line->GetDisplay() && line->GetCurve() != nullptr) {
            drawCurve(svg, "extension", *line->GetCurve(), toPaper);
        }
    }
    for (const Ank_SpecialLine* line : pmi.GetSpecialLines()) {
        for (const Ank_CurveEntity* curve : line->GetCurves()) {
            drawCurve(svg, "special", *curve, toPaper);
        }
    }
    for (const CallResult& call : built.calls) {
        for (const LineEdge& line : call.callerLines) {
            drawCallerLine(svg, line, Projection(view));
        }
    }
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        drawLeader(svg, *leader, toPaper);
    }
    for (const Ank_ComText* block : pmi.GetComText()) {
        drawTextBlock(svg, *block, toPaper, pmi.GetParallelScreen(),
                      built.finished ? Widths::OfDrawingFont : Widths::OfAnyFont);
    }
    svg.close();
}

bool isEmpty(const Ank_PMI& pmi) {
    return pmi.GetLeaders().empty() && pmi.GetExLines().empty() && pmi.GetSpecialLines().empty() &&
           pmi.GetComText().empty();
}

/// Draws an annotation, or says why the picture shows nothing of it.
std::string drawAnnotation(Svg& svg, const BuiltAnnotation& built, const Matrix& view) {
    if (!built.pmi.GetDisplay()) {
        return "it is not displayed (\"display\")";
    }
    const std::size_t before = svg.drawn();
    drawDisplayed(svg, built, view);
    if (svg.drawn() > before) {
        return "";
    }
    return isEmpty(built.pmi) ? "it is empty" : "it lies where no picture reaches";
}

} // namespace

std::string drawScene(const Scene& scene, const Progress& progress, const Warning& warning) {
    const std::size_t count = scene.annotationCount();
    Svg svg;
    drawModel(svg, scene);
    for (std::size_t i = 0; i < count; ++i) {
        BuiltAnnotation built;
        buildAnnotation(scene, i, built);
        const std::string unseen = built.inView ? drawAnnotation(svg, built, scene.view()) : "";
        if (warning && !unseen.empty()) {
            warning(scene.annotation(i).path() + ": shows nothing: " + unseen);
        }
        if (progress) {
            progress(i + 1, count);
        }
    }
    return svg.finish(scene.title(), scene.lines());
}

std::string drawScene(std::string_view sceneText, const Progress& progress,
                      const Warning& warning) {
    return drawScene(Scene(sceneText), progress, warning);
}

} // namespace host
