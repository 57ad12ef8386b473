/// @file
/// Building an annotation of a scene: its calls, one after the other, on one `Ank_PMI`.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <dorvale/dorvale.h>
#include <nlohmann/json.hpp>

#include "scene.h"

namespace host {

/// What one call gave back to its caller, by name.
struct HandedBack {
    std::string call;
    nlohmann::ordered_json values = nlohmann::ordered_json::object();
};

/// An annotation and what its calls handed back.
struct BuiltAnnotation {
    std::string name;
    Ank_PMI pmi;
    std::vector<HandedBack> calls;
    /// Lines that a call left to its caller to draw, in model coordinates.
    std::vector<std::array<Vec3, 2>> callerLines;
};

/// Fills an empty annotation from the scene. Throws `SceneError`.
void buildAnnotation(const Scene& scene, std::size_t index, BuiltAnnotation& built);

/// The names of a scene's calls in their order, each once.
std::vector<std::string> callNames(const Scene& scene);

} // namespace host
