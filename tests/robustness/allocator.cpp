#include "allocator.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace dorvale::test {

Allocator& allocator() {
    thread_local Allocator perThread;
    return perThread;
}

} // namespace dorvale::test

// On Windows a program's allocation functions do not serve the libraries.
#if !defined(_WIN32)

namespace {

using dorvale::test::allocator;
using dorvale::test::Allocator;

/// Whether this allocation is the one to fail.
bool failsNow(Allocator& state) {
    if (state.left == Allocator::kNever) {
        return false;
    }
    if (state.left > 0) {
        --state.left;
        return false;
    }
    state.left = state.forGood ? 0 : Allocator::kNever;
    ++state.failed;
    return true;
}

void* take(std::size_t size) noexcept {
    Allocator& state = allocator();
    void* block = failsNow(state) ? nullptr : std::malloc(std::max<std::size_t>(size, 1));
    state.live += block == nullptr ? 0 : 1;
    state.bytes += size;
    return block;
}

void* takeOrThrow(std::size_t size) {
    void* block = take(size);
    return block == nullptr ? throw std::bad_alloc() : block;
}

void give(void* block) noexcept {
    allocator().live -= block == nullptr ? 0 : 1;
    std::free(block); // NOLINT(cppcoreguidelines-no-malloc): that is what it is made of
}

} // namespace

using NoThrow = std::nothrow_t;

// Nothing here is aligned beyond what every block is.
void* operator new(std::size_t n) { return takeOrThrow(n); }
void* operator new[](std::size_t n) { return takeOrThrow(n); }
void* operator new(std::size_t n, const NoThrow&) noexcept { return take(n); }
void* operator new[](std::size_t n, const NoThrow&) noexcept { return take(n); }
void operator delete(void* block) noexcept { give(block); }
void operator delete[](void* block) noexcept { give(block); }
void operator delete(void* block, std::size_t) noexcept { give(block); }
void operator delete[](void* block, std::size_t) noexcept { give(block); }
void operator delete(void* block, const NoThrow&) noexcept { give(block); }
void operator delete[](void* block, const NoThrow&) noexcept { give(block); }

#endif
