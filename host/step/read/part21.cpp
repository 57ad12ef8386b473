#include "host/step/read/part21.h"

#include <charconv>
#include <optional>

namespace host::step {
namespace {

/// Where a quoted string, a comment or anything else ends that starts at `at`.
std::size_t pastToken(std::string_view file, std::size_t at) {
    const auto past = [&](std::string_view closing, std::size_t from) {
        const std::size_t found = file.find(closing, from);
        return found == std::string_view::npos ? file.size() : found + closing.size();
    };
    if (file[at] == '\'') {
        return past("'", at + 1);
    }
    if (file.substr(at, 2) == "/*") {
        return past("*/", at + 2);
    }
    return at + 1;
}

/// The number behind a `#`.
std::optional<int> referenceAt(std::string_view text, std::size_t at) {
    int number = 0;
    const char* first = text.data() + at + 1;
    const auto read = std::from_chars(first, text.data() + text.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::vector<int> references(std::string_view text) {
    std::vector<int> numbers;
    for (std::size_t at = 0; at < text.size(); at = pastToken(text, at)) {
        if (text[at] != '#') {
            continue;
        }
        if (const auto number = referenceAt(text, at)) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

/// Of a statement such as `#28=NAME(...)`.
void addWrapped(std::string_view statement, std::vector<WrappedList>& lists) {
    const std::size_t start = statement.find('#');
    std::size_t wrapper = statement.find("SET_REPRESENTATION_ITEM");
    if (wrapper == std::string_view::npos) {
        wrapper = statement.find("LIST_REPRESENTATION_ITEM");
    }
    if (start == std::string_view::npos || wrapper == std::string_view::npos || start > wrapper) {
        return;
    }
    std::vector<int> before = references(statement.substr(start, wrapper - start));
    if (before.empty()) {
        return;
    }
    const std::string_view list = statement.substr(wrapper, statement.find(')', wrapper) - wrapper);
    lists.push_back({before.front(), {before.begin() + 1, before.end()}, references(list)});
}

} // namespace

std::vector<WrappedList> wrappedLists(std::string_view file) {
    std::vector<WrappedList> lists;
    std::size_t start = 0;
    for (std::size_t at = 0; at < file.size(); at = pastToken(file, at)) {
        if (file[at] != ';') {
            continue;
        }
        addWrapped(file.substr(start, at - start), lists);
        start = at + 1;
    }
    return lists;
}

} // namespace host::step
