/// @file
/// The font that texts are drawn in, and how wide they are in it.
#pragma once

#include <dorvale/datamanager.h>

namespace host {

/// The font whose widths these are; the picture names it.
inline constexpr const char* kDrawingFont = "DejaVu Sans";
/// How far capitals and digits reach from the base line, in em.
inline constexpr double kCapitalHeight = 1493.0 / 2048;

/// The sides of a character's em square, in model units. Where a text leaves its width to the
/// font, the square is one.
struct CharSize {
    double width;
    double height;
};
CharSize charSizeOf(const Ank_Text& text);

/// In em. Of a surrogate pair, the first half has it all.
double advanceOf(wchar_t c);

/// A line's width in model units.
double widthOf(const Ank_Text& text);

} // namespace host
