/// @file
/// The mesh of a scene: what viewers shade. Pictures are drawn without it.
#pragma once

#include "host/scene/reader.h"

namespace host {

/// Reads a `mesh` member to the end and keeps nothing of it. Throws `SceneError`.
void checkMesh(const Value& value);

} // namespace host
