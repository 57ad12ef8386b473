#include "web/binding/memory.h"

#include <cstdint>
#include <new>

/// Throws in JavaScript, and so never returns.
extern "C" [[noreturn]] __attribute__((import_module("dorvale"), import_name("outOfMemory"))) void
outOfMemory();

extern "C" std::byte __heap_base; // NOLINT(bugprone-reserved-identifier): the linker's name

namespace web {
namespace {

constexpr std::size_t kPage = 65536;
constexpr std::size_t kAlignment = 16;

std::size_t aligned(std::size_t size) { return (size + kAlignment - 1) & ~(kAlignment - 1); }

std::uintptr_t firstFree = aligned(reinterpret_cast<std::uintptr_t>(&__heap_base));

/// One piece of the memory that `new` gives; the pieces are used one after the other.
struct Chunk {
    Chunk* next = nullptr;
    std::byte* end = nullptr;

    std::byte* begin() { return reinterpret_cast<std::byte*>(this) + aligned(sizeof(Chunk)); }
};

Chunk* first = nullptr;
Chunk* current = nullptr;
std::byte* top = nullptr;

/// Makes a chunk the current one, or another behind it that has the room.
void enterChunk(Chunk** place, std::size_t room) {
    std::size_t size = kPage / 2;
    while (*place != nullptr &&
           static_cast<std::size_t>((*place)->end - (*place)->begin()) < room) {
        size = static_cast<std::size_t>((*place)->end - (*place)->begin());
        place = &(*place)->next;
    }
    if (*place == nullptr) {
        const std::size_t bytes = aligned(sizeof(Chunk)) + (room > 2 * size ? room : 2 * size);
        auto* const memory = static_cast<std::byte*>(takeForGood(bytes));
        *place = new (memory) Chunk{nullptr, memory + bytes};
    }
    current = *place;
    top = current->begin();
}

void* allocate(std::size_t size) {
    // Sizes from half the memory upwards would overflow.
    if (size > SIZE_MAX / 2) {
        outOfMemory();
    }
    const std::size_t room = aligned(size);
    if (current == nullptr) {
        enterChunk(&first, room);
    } else if (static_cast<std::size_t>(current->end - top) < room) {
        enterChunk(&current->next, room);
    }
    std::byte* const block = top;
    top += room;
    return block;
}

} // namespace

void* takeForGood(std::size_t bytes) {
    const std::uint64_t end = firstFree + std::uint64_t{aligned(bytes)};
    const std::uint64_t size = std::uint64_t{__builtin_wasm_memory_size(0)} * kPage;
    if (end > size) {
        const auto pages = static_cast<std::size_t>((end - size + kPage - 1) / kPage);
        if (end >= SIZE_MAX || __builtin_wasm_memory_grow(0, pages) == SIZE_MAX) {
            outOfMemory();
        }
    }
    void* const taken = reinterpret_cast<void*>(firstFree);
    firstFree = static_cast<std::uintptr_t>(end);
    return taken;
}

void freeAll() {
    current = first;
    top = first != nullptr ? first->begin() : nullptr;
}

Scope::Scope() : chunk_(current), top_(top) {}

Scope::~Scope() {
    if (chunk_ == nullptr) {
        freeAll();
        return;
    }
    current = static_cast<Chunk*>(chunk_);
    top = top_;
}

} // namespace web

void* operator new(std::size_t size) { return web::allocate(size); }
void* operator new[](std::size_t size) { return web::allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return web::allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return web::allocate(size);
}
void operator delete(void*) noexcept {}
void operator delete[](void*) noexcept {}
void operator delete(void*, std::size_t) noexcept {}
void operator delete[](void*, std::size_t) noexcept {}

// The C library's own allocator would be linked in otherwise.
extern "C" void* malloc(std::size_t size) { return web::allocate(size); }
extern "C" void free(void*) {}
