/// @file
/// What a scene says about finishing its annotations.
#pragma once

#include "host/finish/finish.h"
#include "host/scene/reader.h"

namespace host {

/// The options of a `finish` member; what it does not name is as inherited. Null takes none of it.
/// Throws `SceneError`.
FinishOptions readFinish(const Value& value, const FinishOptions& inherited);

} // namespace host
