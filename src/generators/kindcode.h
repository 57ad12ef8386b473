// The code by which a host says that a dimension may be built.
#pragma once

namespace dorvale {

inline constexpr int kKindCode = 900001;

inline bool isKnownKind(const int* kindCode) {
    return kindCode != nullptr && *kindCode == kKindCode;
}

} // namespace dorvale
