/// @file
/// Drawing a scene through its view: the model and its annotations, as the getters tell.
#pragma once

#include <string>
#include <string_view>

#include "host/scene/scene.h"

namespace host {

/// The picture as SVG. Warns of annotations that show nothing in it. Throws `SceneError`.
std::string drawScene(std::string_view sceneText, const Progress& progress = {},
                      const Warning& warning = {});

/// The same for a scene that has been read.
std::string drawScene(const Scene& scene, const Progress& progress = {},
                      const Warning& warning = {});

} // namespace host
