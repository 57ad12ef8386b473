/// @file
/// The module's memory. What a call allocates is dead when it returns, or has been left behind by
/// an exception that JavaScript threw through it: so allocating moves a mark forward, nothing is
/// freed one by one, and the mark goes back all at once.
#pragma once

#include <cstddef>

namespace web {

/// Memory that stays: doubles, aligned to 8. What a growing buffer leaves behind is lost, so grow
/// by doubling. Throws a JavaScript exception where there is no more.
void* takeForGood(std::size_t bytes);

/// Frees everything that `new` has given since the module began.
void freeAll();

/// Frees at its end what `new` has given since its beginning.
class Scope {
public:
    Scope();
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

private:
    void* chunk_ = nullptr;
    std::byte* top_ = nullptr;
};

/// Whether a scope's end is the end of all that was made in it; elsewhere than in the module, the
/// system's own allocator is at work.
#ifdef __wasm__
inline constexpr bool kScopeFrees = true;
#else
inline constexpr bool kScopeFrees = false;
#endif

/// An object that lives until the scope around it ends. Nobody destroys it there: all that it owns
/// is memory of the scope.
template <class T> class InScope {
public:
    InScope() : object_(new T) {}
    ~InScope() {
        if constexpr (!kScopeFrees) {
            delete object_;
        }
    }
    InScope(const InScope&) = delete;
    InScope& operator=(const InScope&) = delete;
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }

private:
    T* object_;
};

/// A buffer of plain elements that keeps its memory. Growing it keeps what it holds.
template <class T> class Buffer {
public:
    std::size_t capacity() const { return capacity_; }
    T* data() const { return data_; }

    void reserve(std::size_t count, std::size_t used) {
        if (count > capacity_) {
            grow(count, used);
        }
    }

private:
    void grow(std::size_t count, std::size_t used) {
        const std::size_t doubled = 2 * capacity_;
        const std::size_t capacity = count > doubled ? count : doubled;
        T* const data = static_cast<T*>(takeForGood(capacity * sizeof(T)));
        for (std::size_t i = 0; i < used; ++i) {
            data[i] = data_[i];
        }
        data_ = data;
        capacity_ = capacity;
    }

    T* data_ = nullptr;
    std::size_t capacity_ = 0;
};

} // namespace web
