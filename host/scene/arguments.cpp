#include "host/scene/arguments.h"

#include "host/system/utf8.h"

namespace host {

std::optional<Value> SceneArguments::member(const char* name, Need need) {
    return need.isNeeded ? members_.at(name) : members_.find(name);
}

double SceneArguments::number(const char* name) { return members_.at(name).number(); }

int SceneArguments::integer(const char* name, int otherwise) {
    const auto found = members_.find(name);
    return found ? found->integer() : otherwise;
}

bool SceneArguments::boolean(const char* name, bool otherwise) {
    const auto found = members_.find(name);
    return found ? found->boolean() : otherwise;
}

std::uint32_t SceneArguments::color(const char* name) { return members_.at(name).color(); }

std::wstring SceneArguments::text(const char* name) {
    const auto found = members_.find(name);
    return found ? toWide(found->text()) : std::wstring();
}

std::vector<PMITextLine> SceneArguments::textLines(const char* name) {
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

Vec3 SceneArguments::direction(const char* name) { return members_.at(name).vector(); }

std::optional<Vec3> SceneArguments::point(const char* name, Need need) {
    const auto found = member(name, need);
    return found ? std::optional(scene_.readPoint(*found)) : std::nullopt;
}

void SceneArguments::points(const char* name, std::span<Vec3> points) {
    const Value list = members_.at(name);
    const std::vector<Value> items = list.items();
    if (items.size() != points.size()) {
        list.fail("expected " + std::to_string(points.size()) + " points of 3 numbers, got " +
                  std::to_string(items.size()));
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        points[i] = scene_.readPoint(items[i]);
    }
}

std::optional<Shape> SceneArguments::shape(const char* name, Shapes shapes, Need need) {
    const auto found = member(name, need);
    if (!found) {
        return std::nullopt;
    }
    const bool isEdge = found->json().is_object() ||
                        (found->json().is_string() && scene_.findEdge(found->text()) != nullptr);
    if ((shapes & kPoint) != 0 && !isEdge) {
        return scene_.readPoint(*found);
    }
    const Edge edge = scene_.readEdge(*found);
    if (const auto* line = std::get_if<LineEdge>(&edge)) {
        if ((shapes & kLine) == 0) {
            found->fail("expected an arc, got a line");
        }
        return *line;
    }
    if ((shapes & kArc) == 0) {
        found->fail("expected a line, got an arc");
    }
    return std::get<ArcEdge>(edge);
}

CallView SceneArguments::view() {
    const auto found = members_.find("view");
    if (!found) {
        return {scene_.view(), scene_.view()};
    }
    if (found->json().is_null()) {
        return {std::nullopt, scene_.view()};
    }
    const Matrix own = scene_.readView(*found);
    return {own, own};
}

} // namespace host
