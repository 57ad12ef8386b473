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
    /// Whether it belongs to the view that the scene is looked at in, by its name.
    bool inView = true;
    /// Whether it has been finished, by the widths of the drawing's font.
    bool finished = false;

    /// The call that measured its value: the last one that did. Null where none did.
    const CallResult* measuringCall() const;
};

/// Fills an empty annotation from the scene and finishes it. Throws `SceneError`.
void buildAnnotation(const Scene& scene, std::size_t index, BuiltAnnotation& built);

/// The names of a scene's calls in their order, each once.
std::vector<std::string> callNames(const Scene& scene);

} // namespace host
