#include "support/annotation.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace dorvale::test {

namespace {

using Role = Field::Role;

/// Puts together the fields of a record.
class Reader {
public:
    template <typename... Numbers> void number(const char* name, Numbers... numbers) {
        add(name, Role::Number, {static_cast<double>(numbers)...});
    }
    void inPlane(const char* name, std::vector<double> numbers) {
        add(name, Role::InPlane, std::move(numbers));
    }
    void point(const char* name, const Vec& p) { add(name, Role::Point, {p.x, p.y, p.z}); }
    void direction(const char* name, const Vec& v) { add(name, Role::Direction, {v.x, v.y, v.z}); }

    void curve(const Ank_CurveEntity& curve) {
        number("curve", curve.GetCurveType(), curve.GetUsageType(), curve.GetCurveDispType(),
               curve.GetCurveDispStat());
        for (const Vec& p : pointsOf(curve)) {
            point("point", p);
        }
        float domain[2] = {};
        if (curve.GetCurveType() == ANK_CURVE_ARC) {
            const auto& arc = static_cast<const Ank_Ellipse&>(curve);
            arcOnly(arc);
            arc.GetDomain(domain[0], domain[1]);
        } else if (curve.GetCurveType() == ANK_CURVE_POLYLINE) {
            static_cast<const Ank_PolyLine&>(curve).GetDomain(domain[0], domain[1]);
        }
        inPlane("domain", {domain[0], domain[1]});
    }
    void curves(const std::vector<Ank_CurveEntity*>& all) {
        std::for_each(all.begin(), all.end(), [this](const auto* one) { curve(*one); });
    }

    void leader(const Ank_Leader& leader) {
        number("\n  leader", leader.GetLeaderType(), leader.GetStubDelta());
        AnkTermTypeEnum type{};
        float size[2];
        ANK_PNT32 location;
        ANK_DIR32 heading;
        leader.GetTerminator(type, size, location, heading);
        number("terminator", type, size[0], size[1]);
        point("at", location);
        direction("along", heading);
        curves(leader.GetAllCurve());
    }

    void text(const Ank_Text& text) {
        record.fields.push_back({"\n    text", Role::Number, {}, text.GetText()});
        record.fields.push_back({"font", Role::Number, {}, text.GetFont()});
        float width = 0.0F;
        float height = 0.0F;
        text.GetCharWidthHeight(width, height);
        number("size", width, height, text.GetCharSpacing());
        number("usage", text.GetUsageType());
        point("at", text.GetInnerLoc());
        ANK_DIR32 x;
        ANK_DIR32 y;
        text.GetInnerXYAxis(x, y);
        direction("x", x);
        direction("y", y);
    }

    void block(const Ank_ComText& block) {
        number("\n  block");
        point("box", block.GetOuterBox().first);
        point("box", block.GetOuterBox().second);
        if (const Ank_Envelope* frame = block.GetEnvelope()) {
            const ANK_RGBA32 back = frame->GetBackgroundColor();
            const ANK_RGBA32 color = frame->GetFrameColor();
            AnkAnchorTypeEnum type{};
            ANK_PNT32 anchor;
            frame->GetAnchorPoint(type, anchor);
            number("frame", frame->GetFrameFlag(), type);
            number("background", back.r, back.g, back.b, back.a);
            number("color", color.r, color.g, color.b, color.a);
            point("anchor", anchor);
        }
        for (const Ank_Text* line : block.GetTexts()) {
            text(*line);
        }
    }

    Annotation record;

private:
    void add(const char* name, Role role, std::vector<double> numbers) {
        record.fields.push_back({name, role, std::move(numbers), {}});
    }

    void arcOnly(const Ank_Ellipse& arc) {
        float pair[2];
        arc.GetRadius(pair[0], pair[1]);
        number("radius", pair[0], pair[1]);
        direction("normal", arc.GetNormal());
        arc.GetParameter(pair[0], pair[1]);
        inPlane("parameter", {pair[0], pair[1]});
        const ANK_DIR32 origin = arc.GetOriginDir();
        inPlane("originDir", {origin.x, origin.y, origin.z});
        ANK_DIR32 axes[3];
        arc.GetXYZDir(axes[0], axes[1], axes[2]);
        for (const ANK_DIR32& axis : axes) {
            inPlane("axis", {axis.x, axis.y, axis.z});
        }
    }
};

bool near(const Field& a, const Field& b, double tolerance) {
    return a.name == b.name && a.text == b.text &&
           std::equal(a.numbers.begin(), a.numbers.end(), b.numbers.begin(), b.numbers.end(),
                      [&](double x, double y) { return std::abs(x - y) <= tolerance; });
}

std::ostream& operator<<(std::ostream& out, const Field& field) {
    out << field.name << std::setprecision(9);
    for (const double number : field.numbers) {
        out << ' ' << number;
    }
    return field.text.empty() ? out : out << ' ' << testing::PrintToString(field.text);
}

} // namespace

Annotation read(const Ank_CurveEntity& curve) {
    Reader reader;
    reader.curve(curve);
    return reader.record;
}

Annotation read(const Ank_PMI& pmi) {
    Reader reader;
    reader.number("annotation", pmi.GetType(), pmi.GetDim(), pmi.GetDisplay(),
                  pmi.GetParallelScreen());
    for (const auto& row : pmi.GetDefPlane().m) {
        reader.inPlane("plane", {row[0], row[1], row[2], row[3]});
    }
    for (const Ank_ComText* block : pmi.GetComText()) {
        reader.block(*block);
    }
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        reader.leader(*leader);
    }
    for (const Ank_Extensionline* line : pmi.GetExLines()) {
        reader.number("\n  extension line", line->GetExLineType(), line->GetDisplay());
        if (line->GetCurve() != nullptr) {
            reader.curve(*line->GetCurve());
        }
    }
    for (const Ank_SpecialLine* line : pmi.GetSpecialLines()) {
        reader.number("\n  special line", line->GetSpecLinUse());
        reader.curves(line->GetCurves());
    }
    return reader.record;
}

std::ostream& operator<<(std::ostream& out, const Annotation& annotation) {
    for (const Field& field : annotation.fields) {
        out << field << ", ";
    }
    return out;
}

Annotation moved(const Annotation& annotation, const Rigid& motion) {
    Annotation result = annotation;
    for (Field& field : result.fields) {
        if (field.role == Role::Point || field.role == Role::Direction) {
            const Vec v(field.numbers.data());
            const Vec to = field.role == Role::Point ? motion.point(v) : motion.direction(v);
            field.numbers = {to.x, to.y, to.z};
        }
    }
    return result;
}

Annotation inModel(const Ank_PMI& pmi) {
    const auto& rows = pmi.GetDefPlane().m;
    const auto row = [&](int i) { return Vec{rows[i][0], rows[i][1], rows[i][2]}; };
    Annotation carried = moved(read(pmi), {{row(0), row(1), row(2)}, row(3)});
    std::erase_if(carried.fields, [](const Field& f) { return f.role == Role::InPlane; });
    return carried;
}

void ExpectAnnotationNear(const Annotation& actual, const Annotation& expected, double tolerance,
                          const char* file, int line) {
    const auto& got = actual.fields;
    const auto& wanted = expected.fields;
    const auto [first, other] =
        std::mismatch(got.begin(), got.end(), wanted.begin(), wanted.end(),
                      [&](const Field& a, const Field& b) { return near(a, b, tolerance); });
    if (first != got.end() || other != wanted.end()) {
        std::ostringstream difference;
        difference << "first difference: got ";
        first != got.end() ? difference << *first : difference << "no more";
        other != wanted.end() ? difference << ", expected " << *other : difference << ", too many";
        GTEST_MESSAGE_AT_(file, line, "", testing::TestPartResult::kNonFatalFailure)
            << difference.str() << "\ngot " << actual << "\nexpected " << expected;
    }
}

std::vector<Vec> pointsOf(const Ank_CurveEntity& curve) {
    if (curve.GetCurveType() == ANK_CURVE_LINE) {
        const auto& segment = static_cast<const Ank_Line&>(curve);
        return {segment.GetStartPoint(), segment.GetEndPoint()};
    }
    if (curve.GetCurveType() == ANK_CURVE_ARC) {
        const auto& arc = static_cast<const Ank_Ellipse&>(curve);
        ANK_PNT32 start;
        ANK_PNT32 end;
        arc.GetCoordinatePnt(start, end);
        return {start, end, arc.GetCenterPoint()};
    }
    const auto& points = static_cast<const Ank_PolyLine&>(curve).GetPoints();
    return {points.begin(), points.end()};
}

std::vector<Vec> leaderPoints(const Ank_PMI& pmi, std::size_t i) {
    return pointsOf(*pmi.GetLeaders().at(i)->GetAllCurve().at(0));
}

std::vector<Vec> extensionPoints(const Ank_PMI& pmi, std::size_t i) {
    return pointsOf(*pmi.GetExLines().at(i)->GetCurve());
}

std::wstring valueText(const Ank_PMI& pmi) {
    return pmi.GetComText().empty() ? L"" : pmi.GetComText().back()->GetTexts().at(0)->GetText();
}

} // namespace dorvale::test
