/// @file
/// The dimensions of a STEP file, from OCCT's typed entities.
#pragma once

#include <StepData_StepModel.hxx>
#include <Transfer_TransientProcess.hxx>

#include "host/step/read/part21.h"
#include "host/step/read/shapes.h"
#include "host/step/records.h"

namespace host::step {

/// What the dimensions of a file are read from.
struct Source {
    Handle(StepData_StepModel) entities;
    /// From faces and edges of the file to shapes.
    Handle(Transfer_TransientProcess) transfer;
    std::vector<WrappedList> wrapped;
};

/// All dimensions, in the order of the file.
std::vector<Dimension> readDimensions(const Source& source, const Places& places);

/// Geometric tolerances, and datums with their targets, by kind.
std::map<std::string, int> countTolerances(const StepData_StepModel& entities);
std::map<std::string, int> countDatums(const StepData_StepModel& entities);

} // namespace host::step
