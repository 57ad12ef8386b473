// What an annotation costs the allocator.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace dorvale::bench {

/// The heap blocks that a piece of work allocates, and the sizes of those that it keeps.
struct BlockCount {
    std::size_t taken = 0;
    std::vector<std::size_t> kept;
};

/// Runs the work once and counts on this thread.
BlockCount countBlocks(const std::function<void()>& work);

} // namespace dorvale::bench
