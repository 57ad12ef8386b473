/// @file
/// A scene's finished annotations as JSON: every state that a getter can read, and what each call
/// handed back.
#pragma once

#include <string>
#include <string_view>

#include "host/scene/scene.h"

namespace host {

/// Throws `SceneError`.
std::string dumpScene(std::string_view sceneText, const Progress& progress = {});

/// The same for a scene that has been read.
std::string dumpScene(const Scene& scene, const Progress& progress = {});

} // namespace host
