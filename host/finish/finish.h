/// @file
/// Finishing an annotation as a drawing has it: arrow heads that fit, text that stands off its
/// dimension line and reads the right way, and what a label says in place of the value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <dorvale/datamanager.h>

#include "host/calls/calls.h"
#include "host/geometry/vectors.h"

namespace host {

/// How long arrow heads are.
struct ArrowLength {
    /// As long as fits the annotation; then the length does not count.
    bool fits = false;
    /// Above 0.
    double length = 0;
};

/// What is to be done. A member without a value leaves things as the calls made them.
struct FinishOptions {
    std::optional<ArrowLength> arrow;
    /// How far text stands off its dimension line, at least 0.
    std::optional<double> gap;
    /// Lines in place of the value; `mistakeInLabel` says whether they can be.
    std::vector<std::wstring> label;
    std::optional<bool> readable;

    bool empty() const { return !arrow && !gap && label.empty() && !readable; }
};

/// Finishes an annotation for a view.
/// @param call the call that measured the value; an empty one where there is none
void finish(Ank_PMI& pmi, const Matrix& view, const FinishOptions& options, const CallResult& call);

} // namespace host
