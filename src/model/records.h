// The records of the annotation model. Coordinates are known by their names, the elements of a
// matrix and the corners of a box by their positions alone.
#pragma once

#include <array>
#include <cstring>
#include <type_traits>

#include <dorvale/datamanager.h>

namespace dorvale {

inline ANK_PNT32 point32(float x, float y, float z) {
    ANK_PNT32 point{};
    point.x = x;
    point.y = y;
    point.z = z;
    return point;
}

inline ANK_DIR32 direction32(float x, float y, float z) {
    ANK_DIR32 direction{};
    direction.x = x;
    direction.y = y;
    direction.z = z;
    return direction;
}

/// A record of parts that stand one behind the other.
template <typename Record, typename Parts> Record recordOf(const Parts& parts) {
    static_assert(sizeof(Record) == sizeof(Parts) && std::is_trivially_copyable_v<Record>);
    Record record{};
    std::memcpy(static_cast<void*>(&record), &parts, sizeof(record));
    return record;
}

/// @param elements row by row
inline ANK_MTX32 matrix32(const std::array<float, 16>& elements) {
    return recordOf<ANK_MTX32>(elements);
}

inline ANK_BOX32 box32(const ANK_PNT32& first, const ANK_PNT32& second) {
    return recordOf<ANK_BOX32>(std::array{first, second});
}

} // namespace dorvale
