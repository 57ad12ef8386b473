/// @file
/// The library's entry points, by the names that scenes call them.
#pragma once

#include <string>

#include "arguments.h"
#include "build.h"

namespace host {

/// Reads its arguments, makes the call and keeps what it handed back.
using CallFunction = void (*)(Arguments&, BuiltAnnotation&, HandedBack&);

/// Null where there is no call of this name.
const CallFunction* findCall(const std::string& name);

} // namespace host
