#include "host/scene/scene.h"

#include "host/geometry/views.h"
#include "host/scene/finish.h"
#include "host/scene/mesh.h"
#include "host/system/spelling.h"

namespace host {
namespace {

constexpr int kVersion = 1;
constexpr std::size_t kMostAnnotations = 1000000;
constexpr const char* kViewExpected =
    "expected top, front, right, bottom, back, left, iso, the name of one of the scene's views";

std::string textOf(Object& members, const std::string& name) {
    const auto member = members.find(name);
    return member ? member->text() : std::string();
}

void checkVersion(const Value& value) {
    const int version = value.integer();
    if (version < 1) {
        value.fail("expected at least 1, got " + std::to_string(version));
    }
    if (version > kVersion) {
        value.fail("this program reads scenes up to version " + std::to_string(kVersion) +
                   ", got " + std::to_string(version));
    }
}

Matrix readMatrix(const Value& value, const std::string& expected) {
    if (!value.json().is_array() || value.json().size() != 16) {
        value.fail(expected);
    }
    Matrix matrix{};
    std::size_t i = 0;
    for (const Value& item : value.items()) {
        matrix[i++] = item.number();
    }
    return matrix;
}

/// Any point on a circle: where it starts when nobody says.
Vec3 pointOnCircle(const Vec3& center, const Vec3& normal, double radius) {
    const Vec3 n = unit(normal);
    const Vec3 across = std::abs(n[0]) < 0.9 ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    return center + radius * unit(across - dot(across, n) * n);
}

} // namespace

Scene::Scene(std::string_view text) : json_(parseJson(text)), view_(*standardView("top")) {
    Object members(Value(json_, ""));
    title_ = textOf(members, "title");
    kind_ = textOf(members, "kind");
    licence_ = textOf(members, "licence");
    if (const auto version = members.find("version")) {
        checkVersion(*version);
    }
    if (const auto views = members.find("views")) {
        readViews(*views);
    }
    if (const auto view = members.find("view")) {
        view_ = readView(*view);
        viewName_ = view->json().is_string() ? view->text() : "";
    }
    if (const auto lines = members.find("lines")) {
        if (lines->text() != "iso") {
            lines->fail("expected \"iso\"");
        }
        lines_ = LineStyle::Iso;
    }
    if (const auto finish = members.find("finish")) {
        finish_ = readFinish(*finish, {});
    }
    if (const auto points = members.find("points")) {
        readPoints(*points);
    }
    if (const auto edges = members.find("edges")) {
        readEdges(*edges);
    }
    if (const auto mesh = members.find("mesh")) {
        checkMesh(*mesh);
    }
    const std::size_t count = members.at("annotations").items().size();
    if (count > kMostAnnotations) {
        members.at("annotations")
            .fail("expected at most " + std::to_string(kMostAnnotations) + ", got " +
                  std::to_string(count));
    }
    members.refuseOthers();
}

void Scene::useView(const std::string& name) {
    const auto view = findView(name);
    if (!view) {
        throw SceneError(std::string("there is no view of this name; ") + kViewExpected);
    }
    view_ = *view;
    viewName_ = name;
}

std::size_t Scene::annotationCount() const { return json_.at("annotations").size(); }

Value Scene::annotation(std::size_t index) const {
    return {json_.at("annotations").at(index), "annotations[" + std::to_string(index) + ']'};
}

void Scene::readPoints(const Value& value) {
    Object members(value);
    for (const auto& member : value.json().items()) {
        points_[member.key()] = members.at(member.key()).vector();
    }
}

void Scene::readEdges(const Value& list) {
    for (const Value& item : list.items()) {
        Object members(item);
        ModelEdge edge = readModelEdge(members);
        if (!edge.id.empty() && !edgeById_.emplace(edge.id, edges_.size()).second) {
            item.fail("another edge has the id " + echoed(edge.id));
        }
        edges_.push_back(std::move(edge));
    }
}

void Scene::readViews(const Value& list) {
    for (const Value& item : list.items()) {
        Object members(item);
        const Value name = members.at("name");
        if (standardView(name.text())) {
            name.fail("a standard view has this name");
        }
        const Matrix matrix = readMatrix(members.at("matrix"), "expected 16 numbers");
        members.refuseOthers();
        if (!views_.emplace(name.text(), matrix).second) {
            name.fail("another view has the same name");
        }
    }
}

std::optional<Matrix> Scene::findView(const std::string& name) const {
    const auto own = views_.find(name);
    return own == views_.end() ? standardView(name) : own->second;
}

Matrix Scene::readView(const Value& value) const {
    const std::string expected = std::string(kViewExpected) + ", or 16 numbers";
    if (!value.json().is_string()) {
        return readMatrix(value, expected);
    }
    const auto view = findView(value.text());
    if (!view) {
        value.fail(expected);
    }
    return *view;
}

void Scene::checkViewName(const Value& value) const {
    if (!findView(value.text())) {
        value.fail(kViewExpected);
    }
}

ModelEdge Scene::readModelEdge(Object& members) const {
    ModelEdge edge;
    edge.id = textOf(members, "id");
    if (const auto hidden = members.find("hidden")) {
        edge.hidden = hidden->boolean();
    }
    edge.edge = readEdgeMembers(members);
    return edge;
}

Edge Scene::readEdgeMembers(Object& members) const {
    const Value type = members.at("type");
    Edge edge;
    if (type.text() == "line") {
        const Vec3 start = readPoint(members.at("start"));
        const Vec3 end = readPoint(members.at("end"));
        edge = LineEdge{start, end};
    } else if (type.text() == "arc") {
        ArcEdge arc{};
        arc.center = readPoint(members.at("centre"));
        arc.normal = members.at("normal").vector();
        arc.radius = members.at("radius").number();
        const auto start = members.find("start");
        arc.start = start ? readPoint(*start) : pointOnCircle(arc.center, arc.normal, arc.radius);
        const auto end = members.find("end");
        arc.end = end ? readPoint(*end) : arc.start;
        edge = arc;
    } else {
        type.fail("expected \"line\" or \"arc\"");
    }
    members.refuseOthers();
    return edge;
}

Edge Scene::readEdge(const Value& value) const {
    if (value.json().is_object()) {
        Object members(value);
        return readEdgeMembers(members);
    }
    if (!value.json().is_string()) {
        value.fail("expected the id of an edge or an edge");
    }
    const Edge* edge = findEdge(value.text());
    if (edge == nullptr) {
        std::vector<std::string> ids;
        for (const auto& known : edgeById_) {
            ids.push_back(known.first);
        }
        value.fail("there is no edge " + echoed(value.text()) + hint(value.text(), ids));
    }
    return *edge;
}

const Edge* Scene::findEdge(const std::string& id) const {
    const auto found = edgeById_.find(id);
    return found == edgeById_.end() ? nullptr : &edges_[found->second].edge;
}

Vec3 Scene::readPoint(const Value& value) const {
    if (!value.json().is_string()) {
        return value.vector();
    }
    const auto found = points_.find(value.text());
    if (found == points_.end()) {
        std::vector<std::string> names;
        for (const auto& known : points_) {
            names.push_back(known.first);
        }
        value.fail("there is no point " + echoed(value.text()) + hint(value.text(), names));
    }
    return found->second;
}

} // namespace host
