/// @file
/// What a scene holds. docs/scene.md describes the format.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/finish/finish.h"
#include "host/geometry/edges.h"
#include "host/scene/lines.h"
#include "host/scene/reader.h"

namespace host {

/// An edge of the model.
struct ModelEdge {
    std::string id;
    Edge edge;
    /// Whether the part itself hides it from the viewer.
    bool hidden = false;
};

/// The part of a scene that its annotations build on, and the annotations as they were written.
class Scene {
public:
    /// Throws `SceneError`. `annotations` are read as they are built.
    explicit Scene(std::string_view text);

    const std::string& title() const { return title_; }
    const std::string& kind() const { return kind_; }
    const std::string& licence() const { return licence_; }
    const Matrix& view() const { return view_; }
    /// Empty where the scene gives 16 numbers.
    const std::string& viewName() const { return viewName_; }
    LineStyle lines() const { return lines_; }
    const std::vector<ModelEdge>& edges() const { return edges_; }
    /// How annotations are finished that do not say otherwise.
    const FinishOptions& finish() const { return finish_; }

    /// Looks at the scene through the view of this name. Throws `SceneError`.
    void useView(const std::string& name);

    std::size_t annotationCount() const;
    Value annotation(std::size_t index) const;

    /// An edge by its id, or one that is described on the spot.
    Edge readEdge(const Value& value) const;
    /// The edge of an id, if there is one.
    const Edge* findEdge(const std::string& id) const;
    /// 3 numbers or the name of a point.
    Vec3 readPoint(const Value& value) const;
    /// The name of a view or 16 numbers.
    Matrix readView(const Value& value) const;
    /// Throws `SceneError` where there is no view of this name.
    void checkViewName(const Value& value) const;

private:
    /// A standard view or one of the scene's own.
    std::optional<Matrix> findView(const std::string& name) const;
    void readViews(const Value& list);
    void readEdges(const Value& list);
    void readPoints(const Value& value);
    ModelEdge readModelEdge(Object& members) const;
    Edge readEdgeMembers(Object& members) const;

    nlohmann::json json_;
    std::string title_;
    std::string kind_;
    std::string licence_;
    std::map<std::string, Matrix> views_;
    Matrix view_;
    std::string viewName_ = "top";
    LineStyle lines_ = LineStyle::Plain;
    FinishOptions finish_;
    std::vector<ModelEdge> edges_;
    std::map<std::string, std::size_t> edgeById_;
    std::map<std::string, Vec3> points_;
};

/// Called now and then with the annotations done and all of them.
using Progress = std::function<void(std::size_t, std::size_t)>;

/// Called with what is right as a scene but may not be meant: one line.
using Warning = std::function<void(const std::string&)>;

} // namespace host
