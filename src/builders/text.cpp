#include "builders/text.h"

#include <algorithm>

#include "builders/ownership.h"
#include "geometry/wholepart.h"

namespace dorvale {

namespace {

constexpr float kCharSpacing = 0.0F;

std::unique_ptr<Ank_Text> makeText(std::wstring&& line, const ANK_PNT32& location,
                                   const TextAxes& axes, CharSize size) {
    auto text = std::make_unique<Ank_Text>();
    text->SetText(std::move(line));
    wchar_t noFont[] = L"";
    text->SetFont(noFont);
    text->SetCharWidthHeight(static_cast<float>(size.width), static_cast<float>(size.height));
    text->SetCharSpacing(kCharSpacing);
    text->SetInnerLoc(location);
    text->SetInnerXYAxis(axes.x, axes.y);
    return text;
}

/// A block of the texts, or null where there are none.
std::unique_ptr<Ank_ComText> makeBlock(PendingList<Ank_Text>& texts, const TextFrame& frame) {
    if (texts.empty()) {
        return nullptr;
    }
    auto block = std::make_unique<Ank_ComText>();
    texts.handOver([&](const std::vector<Ank_Text*>& list) { block->SetTexts(list); });
    block->SetOuterBox(box32(toPoint32(frame.corner1), toPoint32(frame.corner2)));
    return block;
}

/// How many dots the estimate takes a line to have, each a quarter narrower than other characters:
/// by definition 1 for a line that begins with a dot, one for every character but the first for a
/// line that begins with a minus sign, and none for any other, wherever its dots are.
std::size_t countedDots(std::wstring_view line) {
    if (line.starts_with(L'.')) {
        return 1;
    }
    return line.starts_with(L'-') ? line.size() - 1 : 0;
}

} // namespace

double textHeightOr(double height, double defaultHeight) {
    return height > 0.0 ? height : defaultHeight;
}

CharSize charSizeOf(double height) { return {height / kTextWidthRatio, height}; }

double EstimateTextWidth(std::wstring_view line, CharSize size, double spacing) {
    const double perChar = size.width * 0.5;
    const double between = spacing * 0.25;
    int width = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == L'\\' && i + 1 < line.size()) {
            ++i;
            continue;
        }
        width = wholePart((width == 0 ? 0.0 : between) + perChar + between + width);
    }
    const int trimmed = wholePart(width - between);
    return wholePart(trimmed - perChar * 0.25 * static_cast<double>(countedDots(line)));
}

TextFrame textFrame(std::span<const std::wstring> lines, CharSize size, Vec3 location, Vec3 xAxis,
                    Vec3 yAxis) {
    double widest = 0.0;
    for (const std::wstring& line : lines) {
        widest = std::max(widest, EstimateTextWidth(line, size, kCharSpacing));
    }
    return {moved(location, yAxis, size.width), moved(location, xAxis, widest)};
}

std::unique_ptr<Ank_ComText> makeStackedText(std::span<const std::wstring> lines,
                                             ANK_PNT32& location, const TextAxes& axes,
                                             double height) {
    const CharSize size = charSizeOf(textHeightOr(height));
    const TextFrame frame = textFrame(lines, size, widen(location), widen(axes.x), widen(axes.y));
    PendingList<Ank_Text> texts(lines.size());
    for (const std::wstring& line : lines) {
        if (!line.empty()) {
            texts.add(makeText(std::wstring(line), location, axes, size));
            location.y = static_cast<float>(location.y + size.height);
        }
    }
    return makeBlock(texts, frame);
}

std::unique_ptr<Ank_ComText> makeTextLine(std::wstring&& line, const ANK_PNT32& location,
                                          const TextAxes& axes, double height) {
    const CharSize size = charSizeOf(textHeightOr(height));
    const TextFrame frame =
        textFrame({&line, 1}, size, widen(location), widen(axes.x), widen(axes.y));
    PendingList<Ank_Text> texts(1);
    texts.add(makeText(std::move(line), location, axes, size));
    return makeBlock(texts, frame);
}

std::unique_ptr<Ank_ComText> makePlacedText(std::span<const std::wstring> lines,
                                            std::span<const ANK_PNT32> locations,
                                            const TextAxes& axes, double height) {
    const CharSize size = charSizeOf(textHeightOr(height));
    const TextFrame frame =
        textFrame(lines, size, widen(locations[0]), widen(axes.x), widen(axes.y));
    PendingList<Ank_Text> texts(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].empty()) {
            texts.add(makeText(std::wstring(lines[i]), locations[i], axes, size));
        }
    }
    return makeBlock(texts, frame);
}

} // namespace dorvale
