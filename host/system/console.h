/// @file
/// The standard output, and a line on the terminal while there is something to wait for.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace host {

/// A line on a terminal that says what is being done, and goes away with its object. Where there is
/// no terminal, what it hands out is empty.
class ProgressLine {
public:
    ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Counts annotations.
    std::function<void(std::size_t done, std::size_t all)> counter();

    /// Says it again with the time that has passed.
    std::function<void()> doing(const std::string& what);

private:
    void say(const std::string& text);

    bool shown_;
    bool written_ = false;
};

/// Writes bytes to the standard output as they are; a `FileError` where that fails.
void print(std::string_view bytes);

} // namespace host
