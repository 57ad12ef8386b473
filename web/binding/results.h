/// @file
/// Finished annotations as one buffer, so that they leave the module in a single copy.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

#include "host/calls/calls.h"
#include "web/binding/memory.h"

namespace web {

/// 4-byte words, appended one behind the other: integers, single-precision numbers, texts in UTF-16
/// (two units a word), and double-precision numbers, which start at even words.
class Words {
public:
    std::size_t size() const { return size_; }
    const std::uint32_t* data() const { return words_.data(); }
    void clear() { size_ = 0; }
    void set(std::size_t at, std::size_t value) {
        words_.data()[at] = static_cast<std::uint32_t>(value);
    }

    void add(std::uint32_t value) { *more(1) = value; }
    void add(int value) { add(static_cast<std::uint32_t>(value)); }
    void add(bool value) { add(value ? 1U : 0U); }
    void add(std::span<const double> values);
    /// The number of units, then the units.
    void add(std::wstring_view text);
    /// The number of elements of a list.
    void addCount(std::size_t count) { add(static_cast<std::uint32_t>(count)); }
    /// Appends what the caller fills in before it appends anything else.
    template <class T> T& next() {
        static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % 4 == 0 && alignof(T) == 4);
        return *reinterpret_cast<T*>(more(sizeof(T) / 4));
    }

private:
    std::uint32_t* more(std::size_t count) {
        words_.reserve(size_ + count, size_);
        size_ += count;
        return words_.data() + size_ - count;
    }

    Buffer<std::uint32_t> words_;
    std::size_t size_ = 0;
};

/// A call that was made: its place in the table, and what it gave back.
struct MadeCall {
    std::size_t place = 0;
    host::CallResult result;
};

/// Appends an annotation and what its calls gave back. web/dorvale/src/results.ts reads it.
void addAnnotation(Words& words, const Ank_PMI& pmi, std::span<const MadeCall> calls);

} // namespace web
