/// @file
/// Numbers with units, tolerances and qualifiers of a STEP file, from OCCT's typed entities.
#pragma once

#include <Standard_Transient.hxx>
#include <TCollection_HAsciiString.hxx>

#include "host/step/records.h"

namespace host::step {

/// Text of the file as UTF-8, on one line.
std::string textOf(const Handle(TCollection_HAsciiString) & text);

/// Takes one item of a dimension's representation over: its nominal, a limit, or a remark.
void readItem(const Handle(Standard_Transient) & item, Dimension& dimension);

/// The elements of a compound item.
std::vector<Handle(Standard_Transient)> elementsOf(const Handle(Standard_Transient) & item);

/// Makes limits deviations from the nominal, or from their middle where there is none.
void settleLimits(Dimension& dimension);

/// In the dimension's unit, relative to its nominal.
void setTolerance(const Handle(Standard_Transient) & lower,
                  const Handle(Standard_Transient) & upper, Dimension& dimension);

} // namespace host::step
