/// @file
/// How the lines of a picture are drawn.
#pragma once

namespace host {

enum class LineStyle {
    /// The model thin and grey, behind its annotations.
    Plain,
    /// The widths and dashes of ISO 128.
    Iso
};

} // namespace host
