/// @file
/// The arguments of one call, read from a scene and made into what the library takes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <dorvale/dorvale.h>

#include "scene.h"

namespace host {

/// Owns what it hands out: pointers hold until the arguments end.
class Arguments {
public:
    Arguments(const Scene& scene, Object& members) : scene_(scene), members_(members) {}

    double number(const std::string& name);
    int integer(const std::string& name, int otherwise);
    bool boolean(const std::string& name, bool otherwise);
    std::wstring text(const std::string& name);
    unsigned colour(const std::string& name);
    Vec3 direction(const std::string& name);
    Vec3 point(const std::string& name);
    /// A list of points of a fixed length.
    std::vector<Vec3> points(const std::string& name, std::size_t count);
    std::vector<PMITextLine> textLines(const std::string& name);

    Ank_Line* line(const std::string& name);
    /// Null where the member is missing.
    Ank_Line* optionalLine(const std::string& name);
    Ank_Ellipse* arc(const std::string& name);
    Ank_CurveEntity* lineOrArc(const std::string& name);
    /// An edge, or a point as a polyline of one point.
    Ank_CurveEntity* edgeOrPoint(const std::string& name);

    /// The view that the call is given: the scene's unless it names its own; null on request.
    double* view();
    /// The place that the user picked, seen in the call's view.
    _ank_locate* locate();

private:
    template <class Curve> Curve* keep(std::unique_ptr<Curve> curve);
    Ank_Line* makeLine(const LineEdge& edge);
    Ank_Ellipse* makeArc(const ArcEdge& edge);

    const Scene& scene_;
    Object& members_;
    std::vector<std::unique_ptr<Ank_CurveEntity>> curves_;
    Matrix view_{};
    _ank_locate locate_{};
};

} // namespace host
