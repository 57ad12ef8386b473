#include "web/binding/recipes.h"

#include <algorithm>

namespace web {
namespace {

/// Takes up to `count` elements off the front.
template <class T> std::span<const T> take(std::span<const T>& left, std::size_t count) {
    const std::span<const T> taken = left.first(std::min(count, left.size()));
    left = left.subspan(taken.size());
    return taken;
}

template <class T> T takeOne(std::span<const T>& left) {
    const auto taken = take(left, 1);
    return taken.empty() ? T{} : taken.front();
}

bool startsPair(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool endsPair(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::wstring widen(std::span<const char16_t> units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        auto code = static_cast<std::uint32_t>(units[i]);
        if (startsPair(units[i]) && i + 1 < units.size() && endsPair(units[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10U) + (units[++i] - 0xDC00U);
        }
        text += static_cast<wchar_t>(code);
    }
    return text;
}

std::size_t bytesOf(std::size_t numbers, std::size_t integers, std::size_t units) {
    return 8 * numbers + 4 * integers + 2 * units;
}

} // namespace

double* Input::reserve(std::size_t numbers, std::size_t integers, std::size_t units) {
    const std::size_t size = (bytesOf(numbers, integers, units) + 7) / 8;
    block_.reserve(size, 0);
    numbers_ = numbers;
    integers_ = integers;
    units_ = units;
    return block_.data();
}

std::span<const double> Input::numbers() const { return {block_.data(), numbers_}; }

std::span<const int> Input::integers() const {
    return {reinterpret_cast<const int*>(block_.data() + numbers_), integers_};
}

std::span<const char16_t> Input::units() const {
    const int* const end = integers().data() + integers_;
    return {reinterpret_cast<const char16_t*>(end), units_};
}

Recipes::Recipes(const Input& input) : rows_{input.numbers(), input.integers(), {}} {
    const auto view = take(rows_.numbers, view_.size());
    std::copy(view.begin(), view.end(), view_.begin());
    std::span<const char16_t> units = input.units();
    for (const int length : take(rows_.integers, static_cast<std::size_t>(nextInteger()))) {
        texts_.push_back(widen(take(units, static_cast<std::size_t>(length))));
    }
    rows_.texts = texts_;
}

int Recipes::nextInteger() { return takeOne(rows_.integers); }

double Recipes::nextNumber() { return takeOne(rows_.numbers); }

std::wstring Recipes::nextText() { return takeOne(rows_.texts); }

} // namespace web
