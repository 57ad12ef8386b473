/// @file
/// A block of text as its reader sees it: upright, from left to right.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <dorvale/datamanager.h>

#include "host/geometry/vectors.h"

namespace host {

/// A view's axes in the coordinates of an annotation's plane, of unit length.
struct ViewInPlane {
    Vec3 right;
    Vec3 up;
};
/// Nothing for a view that shows nothing.
std::optional<ViewInPlane> viewInPlane(const Ank_PMI& pmi, const Matrix& view);

/// Coordinates for which text runs along x and stands up along y. Points are in the annotation's
/// plane.
struct TextFrame {
    Vec3 x;
    Vec3 y;

    Vec2 at(const Vec3& p) const { return {dot(p, x), dot(p, y)}; }
    Vec2 at(const ANK_PNT32& p) const { return at(vectorOf(p)); }
    ANK_PNT32 moved(const ANK_PNT32& p, Vec2 by) const;
};

/// What lines of text cover, from the foot of the last one to the capitals of the first.
struct TextBox {
    Vec2 low;
    Vec2 high;

    Vec2 middle() const { return 0.5 * (low + high); }
    double height() const { return high.y - low.y; }
};

/// The lines of a block that stand where their call placed them.
class TextBlock {
public:
    /// The lines that stand together, then each one that stands by itself (the extra line of a
    /// note). Without those that have no direction.
    static std::vector<TextBlock> in(Ank_ComText& block, bool screenParallel,
                                     const ViewInPlane& view);

    const TextFrame& frame() const { return frame_; }
    TextBox box() const;
    /// Of the first line's characters.
    double textHeight() const;
    bool isExtraLine() const;
    /// Its first line.
    const std::wstring& text() const { return lines_.front()->GetText(); }

    /// Where the call centred its text, by the width that it estimated: across the frame.
    double estimatedMiddle() const;
    void centerOn(double x);
    void moveBy(Vec2 by);
    /// Other lines in place of these, one below the other; the last one stands where the first of
    /// these did.
    void setLines(const std::vector<std::wstring>& lines);
    /// Turns text that lies in the plane so that the view shows it neither mirrored nor running to
    /// the left, nor downwards. It covers what it covered before.
    void makeReadable(const ViewInPlane& view);

    /// Brings the block's box and its frame's anchor up to what its lines cover.
    void fitBox();

private:
    TextBlock(Ank_ComText& block, std::vector<Ank_Text*> lines, TextFrame frame)
        : block_(&block), lines_(std::move(lines)), frame_(frame) {}
    ANK_PNT32 firstFoot() const { return lines_.front()->GetInnerLoc(); }

    Ank_ComText* block_;
    std::vector<Ank_Text*> lines_;
    TextFrame frame_;
};

} // namespace host
