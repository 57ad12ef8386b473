// Blocks of text lines.
#pragma once

#include <span>
#include <string_view>

#include "builders/curves.h"

namespace dorvale {

/// A character is this many times as high as wide.
inline constexpr double kTextWidthRatio = 1.41421356;
/// The height of a value text whose height is not given.
inline constexpr double kDefaultTextHeight = 3.5;

/// Writing direction and up direction. They may be a mirrored pair, or swapped.
struct TextAxes {
    ANK_DIR32 x;
    ANK_DIR32 y;

    TextAxes reversed() const { return {toDirection32(-widen(x)), toDirection32(-widen(y))}; }
};

/// Width and height of a character.
struct CharSize {
    double width;
    double height;
};

/// The given height, or the default where it is not positive.
double textHeightOr(double height, double defaultHeight = kDefaultTextHeight);
CharSize charSizeOf(double height);

/// The width of a line in whole model units, without any font: every character counts half its
/// width, cut to a whole number. A backslash and the character after it count nothing.
double EstimateTextWidth(std::wstring_view line, CharSize size, double spacing);

/// The two corners of a block's outer box.
struct TextFrame {
    Vec3 corner1;
    Vec3 corner2;
};

/// A character width up from the location, and the widest line's width along it.
TextFrame textFrame(std::span<const std::wstring> lines, CharSize size, Vec3 location, Vec3 xAxis,
                    Vec3 yAxis);

/// A block of the non-empty lines: the first at the location, each next one a height above it in y,
/// whatever the axes. Moves the location past the last one. Null where all lines are empty.
std::unique_ptr<Ank_ComText> makeStackedText(std::span<const std::wstring> lines,
                                             ANK_PNT32& location, const TextAxes& axes,
                                             double height);

/// A block of one line.
std::unique_ptr<Ank_ComText> makeTextLine(std::wstring&& line, const ANK_PNT32& location,
                                          const TextAxes& axes, double height);

/// The same with a location for each line, empty ones included.
std::unique_ptr<Ank_ComText> makePlacedText(std::span<const std::wstring> lines,
                                            std::span<const ANK_PNT32> locations,
                                            const TextAxes& axes, double height);

} // namespace dorvale
