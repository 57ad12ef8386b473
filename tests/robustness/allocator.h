// Counts what is allocated through `new`, by the libraries too, and fails on demand.
#pragma once

#include <cstddef>
#include <limits>

namespace dorvale::test {

struct Allocator {
    static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

    /// Blocks that live, and bytes that were ever asked for.
    std::size_t live = 0;
    std::size_t bytes = 0;
    /// The number of allocations that succeed until one fails; with `forGood` all fail after it.
    std::size_t left = kNever;
    bool forGood = false;
    std::size_t failed = 0;
};

/// That of the calling thread.
Allocator& allocator();

} // namespace dorvale::test
