/// @file
/// Building an annotation of a scene: its calls, one after the other, on one `Ank_PMI`.
#pragma once

#include <string>
#include <vector>

#include <dorvale/dorvale.h>

#include "host/calls/calls.h"
#include "host/scene/scene.h"

namespace host {

/// An annotation and what its calls handed back.
struct BuiltAnnotation {
    std::string name;
    Ank_PMI pmi;
    std::vector<CallResult> calls;
};

/// Fills an empty annotation from the scene. Throws `SceneError`.
void buildAnnotation(const Scene& scene, std::size_t index, BuiltAnnotation& built);

/// The names of a scene's calls in their order, each once.
std::vector<std::string> callNames(const Scene& scene);

} // namespace host
