#include "builders/lines.h"

#include "builders/ownership.h"

namespace dorvale {

std::unique_ptr<Ank_Extensionline> makeExtensionLine(const Points& points, bool display,
                                                     AnkCurveDispTypeEnum dispType) {
    auto line = std::make_unique<Ank_Extensionline>();
    line->SetExLineType(kExtensionLine);
    auto curve = std::make_unique<Ank_PolyLine>();
    curve->SetUsageType(kExtensionLineCurve);
    curve->SetPoints(points);
    curve->SetDomain(0.0F, 0.0F);
    curve->SetCurveDispType(dispType);
    curve->SetCurveDispStat(true);
    give(std::move(curve), [&](Ank_PolyLine* taken) { line->SetCurve(taken); });
    line->SetDisplay(display);
    return line;
}

std::unique_ptr<Ank_SpecialLine> makeSpecialLine(const Points& points) {
    std::unique_ptr<Ank_PolyLine> curve = makePolyline(points);
    if (!curve) {
        return nullptr;
    }
    auto line = std::make_unique<Ank_SpecialLine>();
    curve->SetCurveDispType(kSpecialLineDisplay);
    curve->SetCurveDispStat(true);
    curve->SetUsageType(kSpecialLineCurve);
    line->SetSpecLinUse(kLineOfPoints);
    give(std::move(curve), [&](Ank_PolyLine* taken) { line->AddCurve(taken); });
    return line;
}

std::unique_ptr<Ank_SpecialLine> makeArcSpecialLine(const ArcShape& shape) {
    std::unique_ptr<Ank_Ellipse> curve = makeArc(shape, std::nullopt).curve;
    auto line = std::make_unique<Ank_SpecialLine>();
    curve->SetUsageType(kSpecialLineCurve);
    curve->SetCurveDispType(kDimensionDisplay);
    curve->SetCurveDispStat(true);
    give(std::move(curve), [&](Ank_Ellipse* taken) { line->AddCurve(taken); });
    return line;
}

} // namespace dorvale
