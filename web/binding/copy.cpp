/// @file
/// What copies and fills memory: most of what this module copies is a few doubles, for which the C
/// library's own, made for long blocks, are slow and large. Compiled without knowledge of the C
/// library's functions: the compiler would see them in these loops.

#include <cstddef>
#include <cstdint>

namespace {

using Word = std::uint64_t;
constexpr std::size_t kWord = sizeof(Word);

/// WebAssembly has no alignment to mind.
void copyWord(std::byte* to, const std::byte* from) { __builtin_memcpy(to, from, kWord); }

} // namespace

extern "C" void* memcpy(void* target, const void* source, std::size_t size) {
    auto* to = static_cast<std::byte*>(target);
    const auto* from = static_cast<const std::byte*>(source);
    for (; size >= kWord; size -= kWord, to += kWord, from += kWord) {
        copyWord(to, from);
    }
    if (size >= kWord / 2) {
        __builtin_memcpy(to, from, kWord / 2);
        size -= kWord / 2, to += kWord / 2, from += kWord / 2;
    }
    for (; size > 0; --size) {
        *to++ = *from++;
    }
    return target;
}

extern "C" void* memmove(void* target, const void* source, std::size_t size) {
    auto* const to = static_cast<std::byte*>(target);
    const auto* const from = static_cast<const std::byte*>(source);
    if (to <= from || to >= from + size) {
        return memcpy(target, source, size);
    }
    while (size >= kWord) {
        size -= kWord;
        copyWord(to + size, from + size);
    }
    while (size > 0) {
        --size;
        to[size] = from[size];
    }
    return target;
}

extern "C" void* memset(void* target, int value, std::size_t size) {
    auto* to = static_cast<std::byte*>(target);
    const Word word = Word{0x0101010101010101} * static_cast<std::uint8_t>(value);
    for (; size >= kWord; size -= kWord, to += kWord) {
        __builtin_memcpy(to, &word, kWord);
    }
    for (; size > 0; --size) {
        *to++ = static_cast<std::byte>(value);
    }
    return target;
}
