#include "host/calls/packed.h"

#include <algorithm>

namespace host {
namespace {

/// Takes the first of what is left; a default past the end.
template <class T> T takeFirst(std::span<const T>& left) {
    if (left.empty()) {
        return {};
    }
    const T& first = left.front();
    left = left.subspan(1);
    return first;
}

enum class ViewOf { Scene, Nobody, Itself };

} // namespace

double PackedArguments::nextNumber() { return takeFirst(rows_.numbers); }

int PackedArguments::nextInteger() { return takeFirst(rows_.integers); }

void PackedArguments::read(std::span<double> numbers) {
    std::span<const double>& left = rows_.numbers;
    const std::size_t count = std::min(numbers.size(), left.size());
    std::copy_n(left.begin(), count, numbers.begin());
    left = left.subspan(count);
}

std::wstring PackedArguments::nextText() { return takeFirst(rows_.texts); }

Vec3 PackedArguments::nextVector() {
    Vec3 v{};
    read(v);
    return v;
}

double PackedArguments::number(const char* /*name*/) { return nextNumber(); }

int PackedArguments::integer(const char* /*name*/, int /*otherwise*/) { return nextInteger(); }

bool PackedArguments::boolean(const char* /*name*/, bool /*otherwise*/) {
    return nextInteger() != 0;
}

std::uint32_t PackedArguments::color(const char* /*name*/) {
    return static_cast<std::uint32_t>(nextInteger());
}

std::wstring PackedArguments::text(const char* /*name*/) { return nextText(); }

std::vector<PMITextLine> PackedArguments::textLines(const char* /*name*/) {
    const auto given = static_cast<std::size_t>(std::max(nextInteger(), 0));
    const std::size_t count = std::min(given, rows_.texts.size());
    std::vector<PMITextLine> lines;
    lines.reserve(count);
    while (lines.size() < count) {
        lines.push_back({nextInteger(), nextText()});
    }
    return lines;
}

Vec3 PackedArguments::direction(const char* /*name*/) { return nextVector(); }

std::optional<Vec3> PackedArguments::point(const char* /*name*/, Need need) {
    const bool isThere = need.always() || nextInteger() != 0;
    const Vec3 p = nextVector();
    return isThere ? std::optional(p) : std::nullopt;
}

void PackedArguments::points(const char* /*name*/, std::span<Vec3> points) {
    for (Vec3& p : points) {
        p = nextVector();
    }
}

std::optional<Shape> PackedArguments::shape(const char* /*name*/, Shapes /*shapes*/,
                                            Need /*need*/) {
    switch (nextInteger()) {
    case kLine: {
        const Vec3 start = nextVector();
        return LineEdge{start, nextVector()};
    }
    case kArc: {
        ArcEdge arc{};
        arc.center = nextVector();
        arc.normal = nextVector();
        arc.radius = nextNumber();
        arc.start = nextVector();
        arc.end = nextVector();
        return arc;
    }
    case kPoint:
        return nextVector();
    default:
        return std::nullopt;
    }
}

CallView PackedArguments::view() {
    switch (static_cast<ViewOf>(nextInteger())) {
    case ViewOf::Nobody:
        return {std::nullopt, sceneView_};
    case ViewOf::Itself: {
        Matrix own{};
        read(own);
        return {own, own};
    }
    default:
        return {sceneView_, sceneView_};
    }
}

void Row::add(const std::optional<Shape>& shape) {
    if (!shape) {
        integers.push_back(0);
    } else if (const auto* line = std::get_if<LineEdge>(&*shape)) {
        integers.push_back(kLine);
        add(line->start);
        add(line->end);
    } else if (const auto* arc = std::get_if<ArcEdge>(&*shape)) {
        integers.push_back(kArc);
        add(arc->center);
        add(arc->normal);
        numbers.push_back(arc->radius);
        add(arc->start);
        add(arc->end);
    } else {
        integers.push_back(kPoint);
        add(std::get<Vec3>(*shape));
    }
}

void Row::add(const CallView& view) {
    integers.push_back(static_cast<int>(view.matrix ? ViewOf::Itself : ViewOf::Nobody));
    if (view.matrix) {
        numbers.insert(numbers.end(), view.matrix->begin(), view.matrix->end());
    }
}

void Row::add(const std::vector<PMITextLine>& lines) {
    integers.push_back(static_cast<int>(lines.size()));
    for (const PMITextLine& line : lines) {
        integers.push_back(line.kind);
        texts.push_back(line.text);
    }
}

} // namespace host
