#include "allocator.h"

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

void* take(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) noexcept {
    Allocator& state = allocator();
    void* block = nullptr;
    if (!failsNow(state)) {
        const std::size_t whole = (size + alignment - 1) / alignment * alignment;
        block = std::aligned_alloc(alignment, whole == 0 ? alignment : whole);
    }
    state.live += block == nullptr ? 0 : 1;
    state.bytes += size;
    return block;
}

void* takeOrThrow(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) {
    void* block = take(size, alignment);
    return block == nullptr ? throw std::bad_alloc() : block;
}

void give(void* block) noexcept {
    allocator().live -= block == nullptr ? 0 : 1;
    std::free(block); // NOLINT(cppcoreguidelines-no-malloc): that is what it is made of
}

} // namespace

using Align = std::align_val_t;
using NoThrow = std::nothrow_t;

void* operator new(std::size_t n) { return takeOrThrow(n); }
void* operator new[](std::size_t n) { return takeOrThrow(n); }
void* operator new(std::size_t n, Align a) { return takeOrThrow(n, std::size_t(a)); }
void* operator new[](std::size_t n, Align a) { return takeOrThrow(n, std::size_t(a)); }
void* operator new(std::size_t n, const NoThrow&) noexcept { return take(n); }
void* operator new[](std::size_t n, const NoThrow&) noexcept { return take(n); }
void* operator new(std::size_t n, Align a, const NoThrow&) noexcept { return take(n, size_t(a)); }
void* operator new[](std::size_t n, Align a, const NoThrow&) noexcept { return take(n, size_t(a)); }
void operator delete(void* block) noexcept { give(block); }
void operator delete[](void* block) noexcept { give(block); }
void operator delete(void* block, std::size_t) noexcept { give(block); }
void operator delete[](void* block, std::size_t) noexcept { give(block); }
void operator delete(void* block, Align) noexcept { give(block); }
void operator delete[](void* block, Align) noexcept { give(block); }
void operator delete(void* block, std::size_t, Align) noexcept { give(block); }
void operator delete[](void* block, std::size_t, Align) noexcept { give(block); }
void operator delete(void* block, const NoThrow&) noexcept { give(block); }
void operator delete[](void* block, const NoThrow&) noexcept { give(block); }
void operator delete(void* block, Align, const NoThrow&) noexcept { give(block); }
void operator delete[](void* block, Align, const NoThrow&) noexcept { give(block); }

#endif
