/// @file
/// The page that shows all views of a file beside the report.
#pragma once

#include <string>
#include <vector>

#include "host/step/write/report.h"

namespace host::step {

/// A view's name and its picture as SVG.
struct DrawnView {
    std::string name;
    std::string svg;
};

/// HTML without anything from elsewhere. A dimension's row and its annotations light each other up.
std::string pageOf(const Drawing& drawing, const std::vector<DrawnView>& views);

} // namespace host::step
