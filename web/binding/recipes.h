/// @file
/// Annotations as JavaScript asks for them: rows of numbers, integers and texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/calls/packed.h"
#include "web/binding/memory.h"

namespace web {

/// What JavaScript writes into the module's memory before a call, in one block: numbers (8 bytes
/// each), integers (4) and UTF-16 units (2).
class Input {
public:
    /// Makes room, and returns where the numbers start.
    double* reserve(std::size_t numbers, std::size_t integers, std::size_t units);

    std::span<const double> numbers() const;
    std::span<const int> integers() const;
    std::span<const char16_t> units() const;

private:
    Buffer<double> block_;
    std::size_t numbers_ = 0;
    std::size_t integers_ = 0;
    std::size_t units_ = 0;
};

/// The rows of the input: a view's 16 numbers, then those of the annotations; and the texts, of
/// which the integers tell the number and the lengths first. Reading past the end gives zeros.
class Recipes {
public:
    explicit Recipes(const Input& input);

    const host::Matrix& view() const { return view_; }
    host::Rows& rows() { return rows_; }
    int nextInteger();
    double nextNumber();
    std::wstring nextText();

private:
    host::Matrix view_{};
    std::vector<std::wstring> texts_;
    host::Rows rows_;
};

} // namespace web
