#include "host/finish/font.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace host {
namespace {

// Advance widths of DejaVu Sans 2.37, from the font's own table, in parts of an em.
constexpr double kUnitsPerEm = 2048;

// U+0020 to U+007E
constexpr std::uint16_t kAscii[] = {
    651,  821,  942,  1716, 1303, 1946, 1597, 563,  799,  799,  1024, 1716, 651,  739,  651,  690,
    1303, 1303, 1303, 1303, 1303, 1303, 1303, 1303, 1303, 1303, 690,  690,  1716, 1716, 1716, 1087,
    2048, 1401, 1405, 1430, 1577, 1294, 1178, 1587, 1540, 604,  604,  1343, 1141, 1767, 1532, 1612,
    1235, 1612, 1423, 1300, 1251, 1499, 1401, 2025, 1403, 1251, 1403, 799,  690,  799,  1716, 1024,
    1024, 1255, 1300, 1126, 1300, 1260, 721,  1300, 1298, 569,  569,  1186, 569,  1995, 1298, 1253,
    1300, 1300, 842,  1067, 803,  1298, 1212, 1675, 1212, 1212, 1075, 1303, 690,  1303, 1716,
};

// U+00A0 to U+00FF
constexpr std::uint16_t kLatin1[] = {
    651,  821,  1303, 1303, 1303, 1303, 690,  1024, 1024, 2048, 965,  1253, 1716, 739,  2048, 1024,
    1024, 1716, 821,  821,  1024, 1303, 1303, 651,  1024, 821,  965,  1253, 1985, 1985, 1985, 1087,
    1401, 1401, 1401, 1401, 1401, 1401, 1995, 1430, 1294, 1294, 1294, 1294, 604,  604,  604,  604,
    1587, 1532, 1612, 1612, 1612, 1612, 1612, 1716, 1612, 1499, 1499, 1499, 1499, 1251, 1239, 1290,
    1255, 1255, 1255, 1255, 1255, 1255, 2011, 1126, 1260, 1260, 1260, 1260, 569,  569,  569,  569,
    1253, 1298, 1253, 1253, 1253, 1253, 1253, 1716, 1253, 1298, 1298, 1298, 1298, 1212, 1300, 1212,
};

struct Advance {
    wchar_t character;
    std::uint16_t width;
};

// Signs of drawings, and punctuation.
constexpr Advance kSigns[] = {
    {0x03A9, 1565},
    {0x2013, 1024},
    {0x2014, 2048},
    {0x2018, 651},
    {0x2019, 651},
    {0x201C, 1061},
    {0x201D, 1061},
    {0x2026, 2048},
    {0x2032, 465},
    {0x2033, 765},
    {0x21A7, 1716},
    {0x2205, 1784},
    {0x2212, 1716},
    {0x221A, 1305},
    {0x2220, 1836},
    {0x2225, 1024},
    {0x2264, 1716},
    {0x2265, 1716},
    {0x22A5, 1784},
    {0x2300, 1233},
    {0x23E5, 1575},
    // What value text writes for the degree sign, and is drawn as one.
    {0x309C, 1024},
};

/// Of a letter that no table has.
constexpr std::uint16_t kLetter = 1253;

std::uint16_t unitsOf(wchar_t c) {
    constexpr wchar_t kFirstIdeograph = 0x2E80;
    if (c >= 0x20 && c <= 0x7E) {
        return kAscii[static_cast<std::size_t>(c - 0x20)];
    }
    if (c >= 0xA0 && c <= 0xFF) {
        return kLatin1[static_cast<std::size_t>(c - 0xA0)];
    }
    const auto* const sign =
        std::find_if(std::begin(kSigns), std::end(kSigns),
                     [c](const Advance& advance) { return advance.character == c; });
    if (sign != std::end(kSigns)) {
        return sign->width;
    }
    const bool endsPair = c >= 0xDC00 && c <= 0xDFFF;
    if (endsPair) {
        return 0;
    }
    return c >= kFirstIdeograph ? static_cast<std::uint16_t>(kUnitsPerEm) : kLetter;
}

} // namespace

double advanceOf(wchar_t c) { return unitsOf(c) / kUnitsPerEm; }

CharSize charSizeOf(const Ank_Text& text) {
    float width = 0;
    float height = 0;
    text.GetCharWidthHeight(width, height);
    return {width > 0 ? static_cast<double>(width) : static_cast<double>(height), height};
}

double widthOf(const Ank_Text& text) {
    const double charWidth = charSizeOf(text).width;
    const double spacing = text.GetCharSpacing();
    double width = 0;
    for (const wchar_t c : text.GetText()) {
        width += advanceOf(c) * charWidth + spacing;
    }
    return width;
}

} // namespace host
