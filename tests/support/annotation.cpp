#include "support/annotation.h"

#include <concepts>
#include <iomanip>
#include <map>
#include <sstream>

namespace dorvale::test {

namespace {

using enum Field::Role;

/// Puts together the fields of a record.
struct Reader {
    Annotation record;

    template <std::convertible_to<double>... Numbers>
    void add(Field::Role role, const char* name, Numbers... numbers) {
        record.fields.push_back({role, name, {static_cast<double>(numbers)...}, {}});
    }
    void add(Field::Role role, const char* name, const Vec& v) { add(role, name, v.x, v.y, v.z); }
    template <typename Object>
    void add(Field::Role role, const char* name, const Object& object,
             void (Object::*get)(float&, float&) const) {
        float pair[2];
        (object.*get)(pair[0], pair[1]);
        add(role, name, pair[0], pair[1]);
    }

    void arc(const Ank_Ellipse& arc) {
        ANK_PNT32 ends[2];
        arc.GetCoordinatePnt(ends[0], ends[1]);
        for (const ANK_PNT32& p : {ends[0], ends[1], arc.GetCenterPoint()}) {
            add(Point, "point", p);
        }
        add(Direction, "normal", arc.GetNormal());
        add(Number, "radius", arc, &Ank_Ellipse::GetRadius);
        add(InPlane, "parameter", arc, &Ank_Ellipse::GetParameter);
        add(InPlane, "domain", arc, &Ank_Ellipse::GetDomain);
        ANK_DIR32 axes[3];
        arc.GetXYZDir(axes[0], axes[1], axes[2]);
        for (const ANK_DIR32& axis : {arc.GetOriginDir(), axes[0], axes[1], axes[2]}) {
            add(InPlane, "axis", axis);
        }
    }

    void curve(const Ank_CurveEntity* curve) {
        if (curve == nullptr) {
            return;
        }
        add(Number, "curve", curve->GetCurveType(), curve->GetUsageType(),
            curve->GetCurveDispType(), curve->GetCurveDispStat());
        if (const auto* line = dynamic_cast<const Ank_Line*>(curve)) {
            add(Point, "point", line->GetStartPoint());
            add(Point, "point", line->GetEndPoint());
        } else if (const auto* ellipse = dynamic_cast<const Ank_Ellipse*>(curve)) {
            arc(*ellipse);
        } else if (const auto* polyline = dynamic_cast<const Ank_PolyLine*>(curve)) {
            for (const ANK_PNT32& p : polyline->GetPoints()) {
                add(Point, "point", p);
            }
            add(InPlane, "domain", *polyline, &Ank_PolyLine::GetDomain);
        }
    }
    void curves(const std::vector<Ank_CurveEntity*>& all) {
        std::ranges::for_each(all, [this](const auto* one) { curve(one); });
    }

    void leader(const Ank_Leader& leader) {
        AnkTermTypeEnum type{};
        float size[2];
        ANK_PNT32 tip;
        ANK_DIR32 along;
        leader.GetTerminator(type, size, tip, along);
        add(Start, "leader", leader.GetLeaderType(), leader.GetStubDelta());
        add(Number, "head", type, size[0], size[1]);
        add(Point, "at", tip);
        add(Direction, "along", along);
        curves(leader.GetAllCurve());
    }

    void text(const Ank_Text& text) {
        add(Start, "text", text.GetUsageType());
        record.fields.back().text = text.GetText();
        add(Number, "spacing", text.GetCharSpacing());
        record.fields.back().text = text.GetFont();
        add(Number, "size", text, &Ank_Text::GetCharWidthHeight);
        add(Point, "at", text.GetInnerLoc());
        ANK_DIR32 axes[2];
        text.GetInnerXYAxis(axes[0], axes[1]);
        add(Direction, "x", axes[0]);
        add(Direction, "y", axes[1]);
    }

    void block(const Ank_ComText* block) {
        if (block == nullptr) {
            return;
        }
        add(Start, "block");
        add(Point, "box", block->GetOuterBox().first);
        add(Point, "box", block->GetOuterBox().second);
        if (const Ank_Envelope* frame = block->GetEnvelope()) {
            AnkAnchorTypeEnum type{};
            ANK_PNT32 anchor;
            frame->GetAnchorPoint(type, anchor);
            add(Number, "frame", frame->GetFrameFlag(), type);
            for (const ANK_RGBA32& c : {frame->GetBackgroundColor(), frame->GetFrameColor()}) {
                add(Number, "colour", c.r, c.g, c.b, c.a);
            }
            add(Point, "anchor", anchor);
        }
        for (const Ank_Text* line : block->GetTexts()) {
            text(*line);
        }
    }
};

bool near(const Field& a, const Field& b, double tolerance) {
    const auto close = [=](double x, double y) { return std::abs(x - y) <= tolerance; };
    return a.name == b.name && a.text == b.text && std::ranges::equal(a.numbers, b.numbers, close);
}

std::ostream& operator<<(std::ostream& out, const Field& field) {
    out << (field.role == Start ? "\n" : "") << field.name << std::setprecision(9);
    for (const double number : field.numbers) {
        out << ' ' << number;
    }
    return field.text.empty() ? out : out << ' ' << testing::PrintToString(field.text);
}

Rigid planeOf(const Ank_PMI& pmi) {
    const auto& rows = pmi.GetDefPlane().m;
    const auto row = [&rows](int i) { return Vec{rows[i][0], rows[i][1], rows[i][2]}; };
    return {{row(0), row(1), row(2)}, row(3)};
}

} // namespace

Annotation read(const Ank_CurveEntity& curve) {
    Reader reader;
    reader.curve(&curve);
    return reader.record;
}

Annotation read(const Ank_PMI& pmi) {
    Reader reader;
    reader.add(Start, "annotation", pmi.GetType(), pmi.GetDim(), pmi.GetDisplay(),
               pmi.GetParallelScreen());
    for (const auto& row : pmi.GetDefPlane().m) {
        reader.add(InPlane, "plane", row[0], row[1], row[2], row[3]);
    }
    for (const Ank_ComText* block : pmi.GetComText()) {
        reader.block(block);
    }
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        reader.leader(*leader);
    }
    for (const Ank_Extensionline* line : pmi.GetExLines()) {
        reader.add(Start, "extension line", line->GetExLineType(), line->GetDisplay());
        reader.curve(line->GetCurve());
    }
    for (const Ank_SpecialLine* line : pmi.GetSpecialLines()) {
        reader.add(Start, "special line", line->GetSpecLinUse());
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

Annotation seenFrom(const Rigid& frame, const Ank_PMI& pmi) {
    Annotation seen = read(pmi);
    std::erase_if(seen.fields, [](const Field& field) { return field.role == InPlane; });
    const Rigid carry = planeOf(pmi).moved(frame.back());
    for (Field& field : seen.fields) {
        if (field.role == Point || field.role == Direction) {
            const Vec v(field.numbers.data());
            const Vec to = field.role == Point ? carry.point(v) : carry.direction(v);
            field.numbers = {to.x, to.y, to.z};
        }
    }
    return seen;
}

std::string difference(const Annotation& a, const Annotation& b, double tolerance) {
    const std::size_t shorter = std::min(a.fields.size(), b.fields.size());
    std::size_t i = 0;
    while (i < shorter && near(a.fields[i], b.fields[i], tolerance)) {
        ++i;
    }
    std::ostringstream text;
    if (i < a.fields.size() || i < b.fields.size()) {
        text << "field " << i << " of" << a << "\nis not that of" << b;
    }
    return text.str();
}

Drawing::Drawing(const Ank_PMI& pmi, const Rigid& in) : frame(in), plane(planeOf(pmi)) {
    std::map<std::string, std::vector<Element>> elements;
    Element* element = nullptr;
    const Annotation seen = seenFrom(frame, pmi);
    for (const Field& field : seen.fields) {
        element = field.role == Start ? &elements[field.name].emplace_back() : element;
        element->fields.push_back(field);
    }
    leaders = elements["leader"];
    extensions = elements["extension line"];
    specials = elements["special line"];
    blocks = elements["block"];
    text = elements["text"].empty() ? Element{} : elements["text"].back();
}

} // namespace dorvale::test
