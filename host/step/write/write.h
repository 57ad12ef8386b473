/// @file
/// Views as scenes (docs/scene.md).
#pragma once

#include <nlohmann/json.hpp>

#include "host/step/place/sheet.h"
#include "host/step/records.h"

namespace host::step {

/// A scene with the part's lines and the annotations of a view. Each annotation's name is the
/// number of its dimension: `#149`.
nlohmann::ordered_json sceneOf(const Sheet& sheet, const Picture& picture, const Model& model);

/// The part with its faces and edges, and the annotations of all views, each with the view that it
/// belongs to.
nlohmann::ordered_json sceneOf(const std::vector<Sheet>& sheets, const Body& body,
                               const Model& model);

/// An annotation as a scene has it.
nlohmann::ordered_json annotationOf(const Annotation& annotation, const Sheet& sheet,
                                    const Model& model);

} // namespace host::step
