// A value's text while it is put together, on the stack.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace dorvale {

/// At most 99 characters and their terminator; every value text is shorter by half.
class ShortText {
public:
    static constexpr std::size_t kCapacity = 100;

    // Characters past the terminator are never read: clearing them would take longer than writing
    // most values.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    ShortText() { data_[0] = '\0'; }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    ShortText(const ShortText& other) { append(other.view()); }
    ShortText& operator=(const ShortText&) = delete;
    ~ShortText() = default;

    void append(char c) {
        data_[size_++] = c;
        data_[size_] = '\0';
    }

    void append(std::string_view text) {
        std::copy(text.begin(), text.end(), &data_[size_]);
        size_ += text.size();
        data_[size_] = '\0';
    }

    void append(std::size_t count, char c) {
        std::fill_n(&data_[size_], count, c);
        size_ += count;
        data_[size_] = '\0';
    }

    /// The decimal digits of a number, without its sign.
    void appendDigits(int number) {
        const unsigned magnitude =
            number < 0 ? 0U - static_cast<unsigned>(number) : static_cast<unsigned>(number);
        char* const end = std::to_chars(&data_[size_], &data_[kCapacity - 1], magnitude).ptr;
        size_ = static_cast<std::size_t>(end - data_.data());
        *end = '\0';
    }

    std::size_t size() const { return size_; }
    const char* c_str() const { return data_.data(); }
    std::string_view view() const { return {data_.data(), size_}; }

private:
    std::array<char, kCapacity> data_;
    std::size_t size_ = 0;
};

} // namespace dorvale
