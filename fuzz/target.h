// What every fuzz target is made of.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

/// Reads the input's numbers; zeros past its end.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }

    template <typename T> T take() {
        T value{};
        const std::size_t count = std::min(sizeof value, rest_.size());
        std::memcpy(&value, rest_.data(), count);
        rest_.remove_prefix(count);
        return value;
    }
    std::uint8_t byte() { return take<std::uint8_t>(); }

private:
    std::string_view rest_;
};

/// Ends the run where a promise is not kept.
inline void require(bool kept) {
    if (!kept) {
        std::abort();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
