/// @file
/// The text of a STEP file, for what its reader does not carry over: lists that are wrapped in a
/// select type, as in
/// `ITEM_IDENTIFIED_REPRESENTATION_USAGE('',$,#35,#643,SET_REPRESENTATION_ITEM((#854,#853)))`.
#pragma once

#include <string_view>
#include <vector>

namespace host::step {

/// An entity with a wrapped list.
struct WrappedList {
    /// The number of the entity that has the list.
    int entity = 0;
    /// The entities that it refers to before the list.
    std::vector<int> references;
    /// The entities in the list.
    std::vector<int> items;
};

/// All wrapped lists of a file, in its order. Takes any bytes.
std::vector<WrappedList> wrappedLists(std::string_view file);

} // namespace host::step
