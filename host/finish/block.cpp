#include "host/finish/block.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "host/finish/font.h"

namespace host {
namespace {

/// Directions of unit length differ by less than this where they differ by rounding alone.
constexpr double kRounding = 1e-6;

ANK_PNT32 toPoint(const Vec3& p) {
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

ANK_DIR32 toDirection(const Vec3& d) {
    return {static_cast<float>(d[0]), static_cast<float>(d[1]), static_cast<float>(d[2])};
}

bool isExtra(const Ank_Text& text) { return text.GetUsageType() == ANK_TEXT_NOTE_EXTRA; }

std::optional<TextFrame> frameOf(const Ank_Text& text) {
    ANK_DIR32 x;
    ANK_DIR32 y;
    text.GetInnerXYAxis(x, y);
    const TextFrame frame{unit(vectorOf(x)), unit(vectorOf(y))};
    const bool hasDirections = dot(frame.x, frame.x) > 0 && dot(frame.y, frame.y) > 0;
    return hasDirections ? std::optional(frame) : std::nullopt;
}

std::unique_ptr<Ank_Text> copyOf(const Ank_Text& text) {
    float width = 0;
    float height = 0;
    text.GetCharWidthHeight(width, height);
    ANK_DIR32 x;
    ANK_DIR32 y;
    text.GetInnerXYAxis(x, y);
    auto copy = std::make_unique<Ank_Text>();
    std::wstring font = text.GetFont();
    copy->SetFont(font.data());
    copy->SetCharWidthHeight(width, height);
    copy->SetCharSpacing(text.GetCharSpacing());
    copy->SetInnerXYAxis(x, y);
    copy->SetUsageType(text.GetUsageType());
    return copy;
}

} // namespace

std::optional<ViewInPlane> viewInPlane(const Ank_PMI& pmi, const Matrix& view) {
    const auto& plane = pmi.GetDefPlane().m;
    const auto inPlane = [&plane, &view](std::size_t column) {
        Vec3 axis{};
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t i = 0; i < 3; ++i) {
                axis[row] += static_cast<double>(plane[row][i]) * view[4 * i + column];
            }
        }
        return unit(axis);
    };
    const ViewInPlane result{inPlane(0), inPlane(1)};
    const bool shows = dot(result.right, result.right) > 0 && dot(result.up, result.up) > 0;
    return shows ? std::optional(result) : std::nullopt;
}

ANK_PNT32 TextFrame::moved(const ANK_PNT32& p, Vec2 by) const {
    return toPoint(vectorOf(p) + by.x * x + by.y * y);
}

std::vector<TextBlock> TextBlock::in(Ank_ComText& block, bool screenParallel,
                                     const ViewInPlane& view) {
    std::vector<std::vector<Ank_Text*>> groups(1);
    for (Ank_Text* text : block.GetTexts()) {
        if (text != nullptr && isExtra(*text)) {
            groups.push_back({text});
        } else if (text != nullptr) {
            groups.front().push_back(text);
        }
    }
    std::vector<TextBlock> blocks;
    for (std::vector<Ank_Text*>& lines : groups) {
        if (lines.empty()) {
            continue;
        }
        const auto frame = screenParallel ? std::optional(TextFrame{view.right, view.up})
                                          : frameOf(*lines.front());
        if (frame) {
            blocks.push_back(TextBlock(block, std::move(lines), *frame));
        }
    }
    return blocks;
}

bool TextBlock::isExtraLine() const { return isExtra(*lines_.front()); }

TextBox TextBlock::box() const {
    TextBox box{{HUGE_VAL, HUGE_VAL}, {-HUGE_VAL, -HUGE_VAL}};
    for (const Ank_Text* line : lines_) {
        const Vec2 foot = frame_.at(line->GetInnerLoc());
        box.low = {std::min(box.low.x, foot.x), std::min(box.low.y, foot.y)};
        box.high = {std::max(box.high.x, foot.x + widthOf(*line)),
                    std::max(box.high.y, foot.y + kCapitalHeight * charSizeOf(*line).height)};
    }
    return box;
}

double TextBlock::textHeight() const { return charSizeOf(*lines_.front()).height; }

double TextBlock::estimatedMiddle() const {
    return 0.5 * (frame_.at(firstFoot()).x + frame_.at(block_->GetOuterBox().second).x);
}

void TextBlock::centerOn(double x) {
    for (Ank_Text* line : lines_) {
        const ANK_PNT32 foot = line->GetInnerLoc();
        line->SetInnerLoc(frame_.moved(foot, {x - 0.5 * widthOf(*line) - frame_.at(foot).x, 0}));
    }
}

void TextBlock::moveBy(Vec2 by) {
    for (Ank_Text* line : lines_) {
        line->SetInnerLoc(frame_.moved(line->GetInnerLoc(), by));
    }
}

void TextBlock::setLines(const std::vector<std::wstring>& lines) {
    Ank_Text& first = *lines_.front();
    const ANK_PNT32 foot = firstFoot();
    std::vector<std::unique_ptr<Ank_Text>> added;
    std::vector<Ank_Text*> texts{&first};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            added.push_back(copyOf(first));
            texts.push_back(added.back().get());
        }
        const auto below = static_cast<double>(lines.size() - 1 - i);
        texts[i]->SetText(lines[i]);
        texts[i]->SetInnerLoc(frame_.moved(foot, {0, below * textHeight()}));
    }
    lines_ = texts;
    block_->SetTexts(texts);
    for (std::unique_ptr<Ank_Text>& text : added) {
        static_cast<void>(text.release());
    }
}

void TextBlock::makeReadable(const ViewInPlane& view) {
    const auto onScreen = [&view](const Vec3& axis) {
        return Vec2{dot(axis, view.right), dot(axis, view.up)};
    };
    const TextBox box = this->box();
    const Vec2 right = onScreen(frame_.x);
    const Vec2 up = onScreen(frame_.y);
    const bool mirrored = cross(right, up) < -kRounding;
    const bool backwards = right.x < -kRounding || (right.x <= kRounding && right.y < 0);
    const bool turnX = backwards;
    const bool turnY = mirrored != backwards;
    if (!turnX && !turnY) {
        return;
    }
    const TextFrame turned{turnX ? -1 * frame_.x : frame_.x, turnY ? -1 * frame_.y : frame_.y};
    for (Ank_Text* line : lines_) {
        const ANK_PNT32 foot = line->GetInnerLoc();
        // As far from the new corner of the block along the new axes as from the old one before.
        const Vec2 from = frame_.at(foot);
        const Vec2 to{turnX ? box.low.x + box.high.x - from.x : from.x,
                      turnY ? box.low.y + box.high.y - from.y : from.y};
        line->SetInnerLoc(frame_.moved(foot, to - from));
        line->SetInnerXYAxis(toDirection(turned.x), toDirection(turned.y));
    }
    frame_ = turned;
}

void TextBlock::fitBox() {
    const ANK_PNT32 first = firstFoot();
    const TextBox covered = box();
    const Vec2 foot = frame_.at(first);
    block_->SetOuterBox({frame_.moved(first, {covered.low.x - foot.x, covered.high.y - foot.y}),
                         frame_.moved(first, {covered.high.x - foot.x, covered.low.y - foot.y})});
    if (Ank_Envelope* envelope = block_->GetEnvelope()) {
        AnkAnchorTypeEnum type{};
        ANK_PNT32 anchor;
        envelope->GetAnchorPoint(type, anchor);
        envelope->SetAnchorPoint(type, first);
    }
}

} // namespace host
