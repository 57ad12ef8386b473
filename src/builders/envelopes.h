// Frames of text blocks.
#pragma once

#include <cstdint>

#include <dorvale/datamanager.h>

namespace dorvale {

/// How a frame looks. Colours: red in the lowest byte, then green, then blue.
struct FrameStyle {
    bool drawn;
    std::uint32_t background;
    std::uint32_t frame;
};

/// Puts a frame round a block, in place of the one it has.
void addFrame(Ank_ComText& block, const FrameStyle& style, const ANK_PNT32& anchor);

/// Frames the first block, anchored at its first text; leaves an annotation without one alone.
void frameFirstBlock(const Ank_PMI& pmi, const FrameStyle& style);

} // namespace dorvale
