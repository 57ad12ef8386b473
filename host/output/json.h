/// @file
/// Writing JSON for people: short lists on one line, numbers as short as they can be, no -0.
#pragma once

#include <cstddef>
#include <string>

#include <dorvale/datamanager.h>
#include <nlohmann/json.hpp>

namespace host {

/// Null for a number that is not finite.
nlohmann::ordered_json number(double value);
/// With the digits that single precision needs.
nlohmann::ordered_json number(float value);

template <class T, std::size_t N> nlohmann::ordered_json numbers(const T (&values)[N]) {
    auto list = nlohmann::ordered_json::array();
    for (const T value : values) {
        list.push_back(number(value));
    }
    return list;
}

nlohmann::ordered_json numbers(const ANK_PNT32& point);
nlohmann::ordered_json numbers(const ANK_DIR32& direction);

/// Appends a value's text. Lists and objects without others in them stand on one line.
void appendText(std::string& text, const nlohmann::ordered_json& value, std::size_t indent);

} // namespace host
