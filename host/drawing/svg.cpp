#include "host/drawing/svg.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "host/system/utf8.h"

namespace host {
namespace {

constexpr int kDecimals = 3;
/// Past this, a picture shows nothing.
constexpr double kLargest = 1e12;

/// Half an A4 sheet, which a picture fills as far as a usual drawing scale lets it.
constexpr Vec2 kSheet{250, 170};
/// Around the picture, as a part of its larger side.
constexpr double kMargin = 0.04;

/// A line on the sheet.
struct Pen {
    /// In millimetres.
    double width;
    const char* color;
};

/// The pens of a picture.
struct Pens {
    Pen model;
    Pen hidden;
    Pen dimension;
    Pen extension;
    /// Lines that bridge a gap.
    Pen special;
};

constexpr const char* kInk = "#0b3d78";
constexpr Pens kPlainPens{
    {0.25, "#9aa1a9"}, {0.15, "#9aa1a9"}, {0.22, kInk}, {0.15, "#4b7bb3"}, {0.15, "#b3562f"}};
// Line group 0.5 of ISO 128: visible edges wide, all others narrow.
constexpr Pens kIsoPens{
    {0.5, "#14191f"}, {0.25, "#14191f"}, {0.25, kInk}, {0.25, kInk}, {0.25, kInk}};

// Dashes of ISO 128, in widths of the line.
constexpr double kDash = 12;
constexpr double kDashGap = 3;

bool canStandInPicture(Vec2 p) { return std::abs(p.x) <= kLargest && std::abs(p.y) <= kLargest; }

/// Characters that XML does not know, not even escaped.
bool isForbidden(std::string_view text, std::size_t i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x20) {
        return byte != '\t' && byte != '\n' && byte != '\r';
    }
    return text.substr(i, 3) == "\xEF\xBF\xBE" || text.substr(i, 3) == "\xEF\xBF\xBF";
}

/// A scale for a drawing: 1, 2 or 5 times a power of ten, at which the picture fits the sheet.
struct DrawingScale {
    double factor;
    std::string name;
};

DrawingScale scaleFor(Vec2 size) {
    const double fitting = std::min(kSheet.x / size.x, kSheet.y / size.y);
    const double power = std::pow(10, std::floor(std::log10(fitting)));
    const double step = fitting >= 5 * power ? 5 : fitting >= 2 * power ? 2 : 1;
    const double factor = step * power;
    const auto whole = [](double value) { return std::to_string(std::llround(value)); };
    return {factor, factor < 1 ? "1:" + whole(1 / factor) : whole(factor) + ":1"};
}

std::string style(double scale, LineStyle lines, bool withHidden) {
    const Pens& pens = lines == LineStyle::Iso ? kIsoPens : kPlainPens;
    const auto width = [scale](double onSheet) {
        return "stroke-width:" + svgNumber(onSheet / scale) + ';';
    };
    const auto line = [&width](const Pen& pen) {
        return "fill:none;stroke-linejoin:round;" + width(pen.width) + "stroke:" + pen.color;
    };
    std::string rules;
    const auto add = [&rules](const std::string& className, const std::string& rule) {
        rules += "\n    ." + className + '{' + rule + '}';
    };
    add("paper", "fill:#fff");
    add("edge", line(pens.model));
    if (withHidden) {
        const double unit = pens.hidden.width / scale;
        add("hidden", line(pens.hidden) + ";stroke-dasharray:" + svgNumber(kDash * unit) + ' ' +
                          svgNumber(kDashGap * unit));
    }
    add("curve", line(pens.dimension));
    add("arrow", std::string("fill:") + kInk);
    add("extension", line(pens.extension));
    add("special", line(pens.special));
    add("frame", width(pens.dimension.width) + "stroke-linejoin:round");
    add("text", "fill:#0a1f3a;font-family:sans-serif;white-space:pre");
    return rules + "\n  ";
}

/// Pieces of an eighth of a turn at the most follow an ellipse to a few millionths of its size.
int pieceCount(double sweep) {
    constexpr int kMost = 8;
    int pieces = 1;
    while (pieces < kMost && pieces * (kFullTurn / kMost) < std::abs(sweep) - 1e-9) {
        ++pieces;
    }
    return pieces;
}

} // namespace

std::string svgNumber(double value) {
    char digits[64];
#ifdef __cpp_lib_to_chars
    *std::to_chars(digits, digits + sizeof digits - 1, value, std::chars_format::fixed, kDecimals)
         .ptr = '\0';
#else
    // The standard library of the web's compiler has no such conversion; both round exactly.
    std::snprintf(digits, sizeof digits, "%.*f", kDecimals, value);
#endif
    const std::string text = digits;
    return text == "-0.000" ? "0.000" : text;
}

std::string xmlText(std::string_view utf8) {
    std::string escaped;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        if (isForbidden(utf8, i)) {
            escaped += "\xEF\xBF\xBD";
            i += static_cast<unsigned char>(c) < 0x20 ? 0 : 2;
        } else if (c == '&') {
            escaped += "&amp;";
        } else if (c == '<') {
            escaped += "&lt;";
        } else if (c == '>') {
            escaped += "&gt;";
        } else if (c == '"') {
            escaped += "&quot;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

void Extent::add(Vec2 p) {
    low_ = {std::min(low_.x, p.x), std::min(low_.y, p.y)};
    high_ = {std::max(high_.x, p.x), std::max(high_.y, p.y)};
}

void Extent::add(const Extent& other) {
    if (other.empty()) {
        return;
    }
    add(other.low_);
    add(other.high_);
}

void Path::append(Vec2 p) {
    if (!canStandInPicture(p)) {
        drawable_ = false;
        return;
    }
    extent_.add(p);
    data_ += svgNumber(p.x) + ' ' + svgNumber(-p.y);
}

void Path::append(char command, Vec2 p) {
    data_ += command;
    append(p);
}

void Path::moveTo(Vec2 p) { append('M', p); }

void Path::lineTo(Vec2 p) { append('L', p); }

void Path::arc(Vec2 center, Vec2 x, Vec2 y, double start, double end) {
    const auto at = [&](double t) { return center + std::cos(t) * x + std::sin(t) * y; };
    const auto along = [&](double t) { return std::cos(t) * y - std::sin(t) * x; };
    const double sweep = std::clamp(end - start, -kFullTurn, kFullTurn);
    const int pieces = pieceCount(sweep);
    const double step = sweep / pieces;
    const double handle = 4.0 / 3.0 * std::tan(step / 4);
    moveTo(at(start));
    for (int piece = 0; piece < pieces; ++piece) {
        const double from = start + piece * step;
        const double to = from + step;
        append('C', at(from) + handle * along(from));
        data_ += ' ';
        append(at(to) - handle * along(to));
        data_ += ' ';
        append(at(to));
    }
}

void Svg::open(const std::string& className, const std::string& attributes) {
    body_ += indent_ + "<g class=\"" + className + '"' + attributes + ">\n";
    indent_ += "  ";
}

void Svg::close() {
    indent_.resize(indent_.size() - 2);
    body_ += indent_ + "</g>\n";
}

void Svg::path(const std::string& className, const Path& path, const std::string& attributes) {
    if (!path.drawable() || path.data().empty()) {
        return;
    }
    extent_.add(path.extent());
    ++drawn_;
    body_ += indent_ + "<path class=\"" + className + "\" d=\"" + path.data() + '"' + attributes +
             "/>\n";
}

void Svg::text(const PlacedText& text) {
    ++drawn_;
    const double em = text.height;
    const Vec2 right = (1 / em) * text.right;
    const Vec2 up = (1 / em) * text.up;
    body_ += indent_ + "<text class=\"text\" xml:space=\"preserve\" transform=\"matrix(" +
             svgNumber(right.x) + ' ' + svgNumber(-right.y) + ' ' + svgNumber(-up.x) + ' ' +
             svgNumber(up.y) + ' ' + svgNumber(text.start.x) + ' ' + svgNumber(-text.start.y) +
             ")\" font-size=\"" + svgNumber(em) + '"';
    if (text.spacing != 0) {
        body_ += " letter-spacing=\"" + svgNumber(text.spacing * em) + '"';
    }
    if (text.width) {
        body_ +=
            " textLength=\"" + svgNumber(*text.width * em) + "\" lengthAdjust=\"spacingAndGlyphs\"";
    }
    if (!text.font.empty()) {
        body_ += " style=\"font-family:'" + xmlText(text.font) + "',sans-serif\"";
    }
    body_ += '>' + xmlText(text.text) + "</text>\n";
}

std::string Svg::finish(const std::string& title, LineStyle lines) const {
    Vec2 low = extent_.empty() ? Vec2{} : extent_.low();
    Vec2 high = extent_.empty() ? Vec2{100, 100} : extent_.high();
    const double side = std::max({high.x - low.x, high.y - low.y, 1.0});
    const Vec2 margin{kMargin * side, kMargin * side};
    low = low - margin;
    high = high + margin;
    const Vec2 size = high - low;
    const DrawingScale scale = scaleFor(size);
    const std::string corner = svgNumber(low.x) + ' ' + svgNumber(-high.y);
    const std::string sides = svgNumber(size.x) + ' ' + svgNumber(size.y);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + svgNumber(scale.factor * size.x) +
           "mm\" height=\"" + svgNumber(scale.factor * size.y) + "mm\" viewBox=\"" + corner + ' ' +
           sides + "\" data-scale=\"" + scale.name + "\">\n" + "  <title>" + xmlText(title) +
           "</title>\n" + //
           "  <style>" + style(scale.factor, lines, hasHidden_) + "</style>\n" +
           "  <rect class=\"paper\" x=\"" + svgNumber(low.x) + "\" y=\"" + svgNumber(-high.y) +
           "\" width=\"" + svgNumber(size.x) + "\" height=\"" + svgNumber(size.y) + "\"/>\n" +
           body_ + "</svg>\n";
}

} // namespace host
