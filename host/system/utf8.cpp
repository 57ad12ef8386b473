#include "host/system/utf8.h"

#include <cstdint>

namespace host {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

/// The bytes that a first byte announces; 0 for one that cannot come first.
std::size_t sequenceLength(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/// Reads the code point at `position` and moves past it; leaves `position` where none stands.
std::optional<char32_t> readCodePoint(std::string_view text, std::size_t& position) {
    const auto first = static_cast<unsigned char>(text[position]);
    const std::size_t length = sequenceLength(first);
    if (length == 0 || length > text.size() - position) {
        return std::nullopt;
    }
    char32_t code = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[position + i]);
        if ((byte & 0xC0U) != 0x80) {
            return std::nullopt;
        }
        code = (code << 6) | (byte & 0x3FU);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[length] || code > kLastCodePoint || isSurrogate(code)) {
        return std::nullopt;
    }
    position += length;
    return code;
}

void appendWide(std::wstring& text, char32_t code) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (code >= 0x10000) {
            text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
            return;
        }
    }
    text += static_cast<wchar_t>(code);
}

void appendUtf8(std::string& text, char32_t code) {
    const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | (code >> 6));
        add(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        add(0xE0 | (code >> 12));
        add(0x80 | ((code >> 6) & 0x3F));
        add(0x80 | (code & 0x3F));
    } else {
        add(0xF0 | (code >> 18));
        add(0x80 | ((code >> 12) & 0x3F));
        add(0x80 | ((code >> 6) & 0x3F));
        add(0x80 | (code & 0x3F));
    }
}

/// Joins the surrogate pair that starts at `position`, if characters come in pairs and one does.
std::optional<char32_t> readPair(std::wstring_view text, std::size_t position) {
    if (sizeof(wchar_t) != 2 || position + 1 == text.size()) {
        return std::nullopt;
    }
    const auto high = static_cast<char32_t>(text[position]);
    const auto low = static_cast<char32_t>(text[position + 1]);
    const bool isPair = high >= 0xD800 && high <= 0xDBFF && low >= 0xDC00 && low <= 0xDFFF;
    if (!isPair) {
        return std::nullopt;
    }
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

} // namespace

std::optional<std::size_t> findInvalidUtf8(std::string_view text) {
    std::size_t position = 0;
    while (position < text.size()) {
        if (!readCodePoint(text, position)) {
            return position;
        }
    }
    return std::nullopt;
}

std::wstring toWide(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    std::size_t position = 0;
    while (position < text.size()) {
        const auto code = readCodePoint(text, position);
        if (!code) {
            ++position;
        }
        appendWide(wide, code.value_or(kReplacement));
    }
    return wide;
}

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<char32_t>(text[i]);
        if (const auto pair = readPair(text, i)) {
            code = *pair;
            ++i;
        }
        appendUtf8(bytes, code > kLastCodePoint || isSurrogate(code) ? kReplacement : code);
    }
    return bytes;
}

} // namespace host
