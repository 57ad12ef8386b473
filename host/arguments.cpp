#include "arguments.h"

#include <algorithm>

#include "utf8.h"

namespace host {
namespace {

ANK_PNT32 toPoint(const Vec3& p) {
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

ANK_DIR32 toDirection(const Vec3& d) {
    return {static_cast<float>(d[0]), static_cast<float>(d[1]), static_cast<float>(d[2])};
}

} // namespace

double Arguments::number(const std::string& name) { return members_.at(name).number(); }

int Arguments::integer(const std::string& name, int otherwise) {
    const auto member = members_.find(name);
    return member ? member->integer() : otherwise;
}

bool Arguments::boolean(const std::string& name, bool otherwise) {
    const auto member = members_.find(name);
    return member ? member->boolean() : otherwise;
}

std::wstring Arguments::text(const std::string& name) {
    const auto member = members_.find(name);
    return member ? toWide(member->text()) : std::wstring();
}

unsigned Arguments::colour(const std::string& name) { return members_.at(name).colour(); }

Vec3 Arguments::direction(const std::string& name) { return members_.at(name).vector(); }

Vec3 Arguments::point(const std::string& name) { return scene_.readPoint(members_.at(name)); }

std::vector<Vec3> Arguments::points(const std::string& name, std::size_t count) {
    const Value list = members_.at(name);
    const std::vector<Value> items = list.items();
    if (items.size() != count)
        list.fail("expected " + std::to_string(count) + " points of 3 numbers, got " +
                  std::to_string(items.size()));
    std::vector<Vec3> points;
    points.reserve(count);
    for (const Value& item : items)
        points.push_back(scene_.readPoint(item));
    return points;
}

std::vector<PMITextLine> Arguments::textLines(const std::string& name) {
    std::vector<PMITextLine> lines;
    for (const Value& item : members_.at(name).items()) {
        if (item.json().is_object()) {
            Object line(item);
            const int kind = line.at("kind").integer();
            lines.push_back({kind, toWide(line.at("text").text())});
            line.refuseOthers();
        } else {
            lines.push_back({0, toWide(item.text())});
        }
    }
    return lines;
}

template <class Curve> Curve* Arguments::keep(std::unique_ptr<Curve> curve) {
    Curve* kept = curve.get();
    curves_.push_back(std::move(curve));
    return kept;
}

Ank_Line* Arguments::makeLine(const LineEdge& edge) {
    auto line = std::make_unique<Ank_Line>();
    line->SetStartPoint(toPoint(edge.start));
    line->SetEndPoint(toPoint(edge.end));
    return keep(std::move(line));
}

Ank_Ellipse* Arguments::makeArc(const ArcEdge& edge) {
    const Vec3 z = unit(edge.normal);
    const Vec3 x = unit(edge.start - edge.centre);
    const Vec3 y = cross(z, x);
    const auto radius = static_cast<float>(edge.radius);
    const auto sweep = static_cast<float>(sweepTo(edge.end - edge.centre, x, y));
    auto arc = std::make_unique<Ank_Ellipse>();
    arc->SetCenterPoint(toPoint(edge.centre));
    arc->SetNormal(toDirection(edge.normal));
    arc->SetOriginDir(toDirection(x));
    arc->SetXYZDir(toDirection(x), toDirection(y), toDirection(z));
    arc->SetRadius(radius, radius);
    arc->SetParameter(0, sweep);
    arc->SetDomain(0, sweep);
    arc->SetCoordiantePnt(toPoint(edge.start), toPoint(edge.end));
    return keep(std::move(arc));
}

Ank_Line* Arguments::line(const std::string& name) {
    const Value member = members_.at(name);
    const Edge edge = scene_.readEdge(member);
    if (!std::holds_alternative<LineEdge>(edge))
        member.fail("expected a line, got an arc");
    return makeLine(std::get<LineEdge>(edge));
}

Ank_Line* Arguments::optionalLine(const std::string& name) {
    return members_.find(name) ? line(name) : nullptr;
}

Ank_Ellipse* Arguments::arc(const std::string& name) {
    const Value member = members_.at(name);
    const Edge edge = scene_.readEdge(member);
    if (!std::holds_alternative<ArcEdge>(edge))
        member.fail("expected an arc, got a line");
    return makeArc(std::get<ArcEdge>(edge));
}

Ank_CurveEntity* Arguments::lineOrArc(const std::string& name) {
    const Edge edge = scene_.readEdge(members_.at(name));
    if (const auto* line = std::get_if<LineEdge>(&edge))
        return makeLine(*line);
    return makeArc(std::get<ArcEdge>(edge));
}

Ank_CurveEntity* Arguments::edgeOrPoint(const std::string& name) {
    const Value member = members_.at(name);
    const bool isEdge = member.json().is_object() ||
                        (member.json().is_string() && scene_.findEdge(member.text()) != nullptr);
    if (isEdge)
        return lineOrArc(name);
    auto polyline = std::make_unique<Ank_PolyLine>();
    polyline->SetPoints({toPoint(scene_.readPoint(member))});
    return keep(std::move(polyline));
}

double* Arguments::view() {
    const auto member = members_.find("view");
    if (member && member->json().is_null())
        return nullptr;
    view_ = member ? readView(*member) : scene_.view();
    return view_.data();
}

_ank_locate* Arguments::locate() {
    const Vec3 place = point("locate");
    std::copy(place.begin(), place.end(), locate_.point);
    const double* seen = view();
    if (seen == nullptr)
        seen = scene_.view().data();
    std::copy(seen, seen + view_.size(), locate_.viewMatrix);
    return &locate_;
}

} // namespace host
