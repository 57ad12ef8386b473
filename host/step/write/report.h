/// @file
/// What became of every dimension of a file, for people and for programs.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "host/step/place/place.h"

namespace host::step {

/// A file with all that was made of it.
struct Drawing {
    /// The file's name without its folders.
    std::string file;
    Model model;
    /// One for each dimension.
    std::vector<Outcome> outcomes;
    std::vector<Sheet> sheets;
    /// What else is to be told: a view that was drawn from the mesh, for one.
    std::vector<std::string> remarks;
};

/// Derives and places all dimensions of a model.
Drawing makeDrawing(std::string file, Model model);

/// The unit of most of the file's lengths.
std::string unitOf(const Model& model);

/// The names of the views that show a dimension.
std::vector<std::string> viewsOf(const Drawing& drawing, std::size_t dimension);

const char* fateName(Fate fate);
int countOf(const Drawing& drawing, Fate fate);

nlohmann::ordered_json reportJson(const Drawing& drawing);

/// A line for each dimension, then the counts.
std::string reportText(const Drawing& drawing);

/// Which tolerances and datums there are: `flatness 3, position 11`.
std::string countsText(const std::map<std::string, int>& counts);

} // namespace host::step
