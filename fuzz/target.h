// What every fuzz target is made of.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

/// Reads the input's numbers; zeros past its end.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool empty() const { return rest_.empty(); }

    template <typename T> T take() {
        std::array<std::uint8_t, sizeof(T)> bytes{};
        const std::size_t count = std::min(bytes.size(), rest_.size());
        std::copy_n(rest_.begin(), count, bytes.begin());
        rest_ = rest_.subspan(count);
        return std::bit_cast<T>(bytes);
    }

    /// The names on a line, with blanks between them.
    std::vector<std::string> takeNames() {
        std::vector<std::string> names(1);
        while (!empty()) {
            const char c = take<char>();
            if (c == '\n') {
                break;
            }
            if (c == ' ') {
                names.emplace_back();
            } else {
                names.back() += c;
            }
        }
        return names;
    }

private:
    std::span<const std::uint8_t> rest_;
};

/// Ends the run where a promise is not kept.
inline void require(bool kept) {
    if (!kept) {
        std::abort();
    }
}

/// An input that is not one of the target's: a mistake in a corpus, an everyday thing while
/// fuzzing.
int refused(const std::string& why);

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
