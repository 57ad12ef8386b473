#include "host/drawing/text.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "host/finish/font.h"
#include "host/system/utf8.h"

namespace host {
namespace {

/// What value text writes for the degree sign.
constexpr wchar_t kValueDegree = 0x309C;
constexpr wchar_t kDegreeSign = 0x00B0;

// How far letters reach from the base line and how far a frame keeps from them, in em.
constexpr double kAscent = 0.76;
constexpr double kDescent = 0.22;
constexpr double kFrameGap = 0.25;

/// How wide a character is in a usual font without serifs, in em. Of a surrogate pair, the first
/// half has it all.
double advance(wchar_t c) {
    constexpr std::wstring_view kNarrow = L"iljIft.,:;'|!()[]/\\ ";
    constexpr std::wstring_view kWide = L"MWmw@%";
    constexpr wchar_t kFirstIdeograph = 0x2E80;
    const bool endsPair = c >= 0xDC00 && c <= 0xDFFF;
    if (endsPair) {
        return 0;
    }
    if (kNarrow.find(c) != std::wstring_view::npos) {
        return 0.36;
    }
    if (kWide.find(c) != std::wstring_view::npos || c >= kFirstIdeograph) {
        return 0.96;
    }
    return c >= L'A' && c <= L'Z' ? 0.7 : 0.63;
}

double widthInEm(const std::wstring& text, double spacing, Widths widths) {
    double width = 0;
    for (const wchar_t c : text) {
        width += (widths == Widths::OfDrawingFont ? advanceOf(c) : advance(c)) + spacing;
    }
    return width;
}

std::wstring shownText(const Ank_Text& text) {
    std::wstring shown = text.GetText();
    std::replace(shown.begin(), shown.end(), kValueDegree, kDegreeSign);
    return shown;
}

/// The font's own name as a style may quote it.
std::string fontName(const Ank_Text& text) {
    std::string name = toUtf8(text.GetFont());
    name.erase(std::remove_if(name.begin(), name.end(),
                              [](char c) { return c == '\'' || c == '\\' || c == '\n'; }),
               name.end());
    return name;
}

/// A line of text on paper, and how wide it is.
struct TextLine {
    PlacedText placed;
    double widthInEm;

    /// A point of the line: along it and up from its base line, in em.
    Vec2 at(double along, double up) const {
        return placed.start + along * placed.right + up * placed.up;
    }
};

/// Nothing for text that has no size, or stands where no picture reaches.
std::optional<TextLine> place(const Ank_Text& text, const Projection& toPaper, bool screenParallel,
                              Widths widths) {
    constexpr double kSmallest = 1e-3;
    constexpr double kLargest = 1e9;
    float charWidth = 0;
    float charHeight = 0;
    text.GetCharWidthHeight(charWidth, charHeight);
    const double height = charHeight;
    const double width = charWidth > 0 ? static_cast<double>(charWidth) : height;
    ANK_DIR32 x;
    ANK_DIR32 y;
    text.GetInnerXYAxis(x, y);
    TextLine line{};
    line.placed.text = toUtf8(shownText(text));
    line.placed.font = fontName(text);
    if (widths == Widths::OfDrawingFont && line.placed.font.empty()) {
        line.placed.font = kDrawingFont;
    }
    line.placed.start = toPaper.point(vectorOf(text.GetInnerLoc()));
    line.placed.right =
        screenParallel ? Vec2{toPaper.scale() * width, 0} : width * toPaper.offset(vectorOf(x));
    line.placed.up =
        screenParallel ? Vec2{0, toPaper.scale() * height} : height * toPaper.offset(vectorOf(y));
    line.placed.height = height;
    line.placed.spacing = static_cast<double>(text.GetCharSpacing()) / width;
    line.widthInEm = widthInEm(text.GetText(), line.placed.spacing, widths);
    if (widths == Widths::OfDrawingFont) {
        line.placed.width = line.widthInEm;
    }
    const double reach = length(line.placed.start) + length(line.placed.up) +
                         line.widthInEm * length(line.placed.right);
    const bool canBeSeen = height >= kSmallest && width >= kSmallest && reach <= kLargest;
    return canBeSeen ? std::optional(line) : std::nullopt;
}

Extent extentOf(const TextLine& line) {
    Extent extent;
    for (const double along : {0.0, line.widthInEm}) {
        extent.add(line.at(along, kAscent));
        extent.add(line.at(along, -kDescent));
    }
    return extent;
}

std::string colorName(const ANK_RGBA32& color) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string name = "#";
    for (const float channel : {color.r, color.g, color.b}) {
        const int value = static_cast<int>(std::lround(std::clamp(channel, 0.0F, 1.0F) * 255));
        name += kDigits[value / 16];
        name += kDigits[value % 16];
    }
    return name;
}

/// The frame along the first line that holds them all. Seen edge-on there is none.
Path frameAround(const std::vector<TextLine>& lines) {
    const TextLine& first = lines.front();
    const Vec2 right = first.placed.right;
    const Vec2 up = first.placed.up;
    const double area = cross(right, up);
    Extent inEm;
    for (const TextLine& line : lines) {
        for (const double along : {0.0, line.widthInEm}) {
            for (const double height : {kAscent, -kDescent}) {
                const Vec2 p = line.at(along, height) - first.placed.start;
                inEm.add(Vec2{cross(p, up) / area, cross(right, p) / area});
            }
        }
    }
    const double aside = kFrameGap * length(up) / length(right);
    const Vec2 low = inEm.low() - Vec2{aside, kFrameGap};
    const Vec2 high = inEm.high() + Vec2{aside, kFrameGap};
    Path path;
    path.moveTo(first.at(low.x, low.y));
    path.lineTo(first.at(high.x, low.y));
    path.lineTo(first.at(high.x, high.y));
    path.lineTo(first.at(low.x, high.y));
    path.close();
    return path;
}

/// The colours are drawn opaque: their fourth channel is always 0.
void drawFrame(Svg& svg, const Ank_Envelope& envelope, const std::vector<TextLine>& lines) {
    const std::string line = envelope.GetFrameFlag() ? colorName(envelope.GetFrameColor()) : "none";
    svg.path("frame", frameAround(lines),
             " fill=\"" + colorName(envelope.GetBackgroundColor()) + "\" stroke=\"" + line + '"');
}

} // namespace

void drawTextBlock(Svg& svg, const Ank_ComText& block, const Projection& toPaper,
                   bool screenParallel, Widths widths) {
    std::vector<TextLine> lines;
    for (const Ank_Text* text : block.GetTexts()) {
        if (auto line = place(*text, toPaper, screenParallel, widths)) {
            lines.push_back(*std::move(line));
        }
    }
    if (lines.empty()) {
        return;
    }
    svg.open("block");
    if (block.GetEnvelope() != nullptr) {
        drawFrame(svg, *block.GetEnvelope(), lines);
    }
    for (const TextLine& line : lines) {
        svg.text(line.placed);
        svg.cover(extentOf(line));
    }
    svg.close();
}

} // namespace host
