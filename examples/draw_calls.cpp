// A host that walks a finished annotation and issues draw calls of its own; here it prints them.
// Coordinates are in the annotation's plane, which is set as the current transformation first.
#include <iostream>
#include <vector>

#include <dorvale/dorvale.h>

namespace {

std::ostream& operator<<(std::ostream& out, const ANK_PNT32& p) { return out << p.x << ' ' << p.y; }
std::ostream& operator<<(std::ostream& out, const ANK_DIR32& d) { return out << d.x << ' ' << d.y; }

void setTransformation(const ANK_MTX32& plane) {
    std::cout << "transform";
    for (const auto& row : plane.m) {
        for (const float element : row) {
            std::cout << ' ' << element;
        }
    }
    std::cout << '\n';
}

void drawPolyline(const Ank_PolyLine& polyline) {
    const char* command = "move ";
    for (const ANK_PNT32& point : polyline.GetPoints()) {
        std::cout << command << point << '\n';
        command = "line ";
    }
}

/// An arc runs counter-clockwise about its normal, so that on the plane it runs clockwise where the
/// normal's z is negative. The sign of the sweep says which.
void drawArc(const Ank_Ellipse& arc) {
    constexpr float turn = 6.2831853F;
    float start = 0;
    float end = 0;
    arc.GetParameter(start, end);
    if (arc.GetNormal().z < 0) {
        end -= end > start ? turn : 0;
    } else {
        end += end < start ? turn : 0;
    }
    float radius = 0;
    float sameForCircles = 0;
    arc.GetRadius(radius, sameForCircles);
    std::cout << "arc " << arc.GetCenterPoint() << " radius " << radius << " from " << start
              << " sweep " << end - start << '\n';
}

void drawCurve(const Ank_CurveEntity& curve) {
    if (curve.GetCurveType() == ANK_CURVE_ARC) {
        drawArc(static_cast<const Ank_Ellipse&>(curve));
    } else if (curve.GetCurveType() == ANK_CURVE_POLYLINE) {
        drawPolyline(static_cast<const Ank_PolyLine&>(curve));
    }
}

/// A triangle with its tip at the terminator's location and its body along the direction.
void drawHead(const Ank_Leader& leader) {
    AnkTermTypeEnum type = ANK_TERM_NONE;
    float size[2] = {};
    ANK_PNT32 tip;
    ANK_DIR32 along;
    leader.GetTerminator(type, size, tip, along);
    if (type != ANK_TERM_ARROW) {
        return;
    }
    const float half = size[1] / 2;
    const ANK_PNT32 base{tip.x + along.x * size[0], tip.y + along.y * size[0]};
    std::cout << "fill " << tip << ", "
              << ANK_PNT32{base.x - along.y * half, base.y + along.x * half} << ", "
              << ANK_PNT32{base.x + along.y * half, base.y - along.x * half} << '\n';
}

void drawText(const Ank_Text& line, bool parallelToScreen) {
    float width = 0;
    float height = 0;
    line.GetCharWidthHeight(width, height);
    std::cout << "text at " << line.GetInnerLoc() << " height " << height;
    if (!parallelToScreen) {
        ANK_DIR32 x;
        ANK_DIR32 y;
        line.GetInnerXYAxis(x, y);
        std::cout << " along " << x << " up " << y;
    }
    std::cout << ": ";
    for (const wchar_t c : line.GetText()) {
        if (c < 0x80) {
            std::cout << static_cast<char>(c);
        } else {
            std::cout << "<U+" << std::hex << static_cast<unsigned>(c) << std::dec << '>';
        }
    }
    std::cout << '\n';
}

void draw(const Ank_PMI& pmi) {
    setTransformation(pmi.GetDefPlane());
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        for (const Ank_CurveEntity* curve : leader->GetAllCurve()) {
            drawCurve(*curve);
        }
        drawHead(*leader);
    }
    for (const Ank_Extensionline* line : pmi.GetExLines()) {
        drawCurve(*line->GetCurve());
    }
    for (const Ank_SpecialLine* line : pmi.GetSpecialLines()) {
        for (const Ank_CurveEntity* curve : line->GetCurves()) {
            drawCurve(*curve);
        }
    }
    for (const Ank_ComText* block : pmi.GetComText()) {
        for (const Ank_Text* line : block->GetTexts()) {
            drawText(*line, pmi.GetParallelScreen());
        }
    }
}

} // namespace

int main() {
    Ank_Line flat;
    flat.SetEndPoint({20, 0, 0});
    Ank_Line slanted;
    slanted.SetEndPoint({10, 10, 0});
    _ank_locate beyond{{24, 10, 0}, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    int mode = 1;
    int status = -1;
    int gaps = 0;
    double gapEnds[4][3] = {};
    Ank_PMI angle;
    PMICreateAngleDim(&mode, &flat, &slanted, &beyond, 3.5, &angle, &status, gaps, gapEnds,
                      beyond.viewMatrix);
    draw(angle);
    return status;
}
