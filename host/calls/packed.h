/// @file
/// The arguments of calls as rows of numbers, integers and texts, in the order of their
/// descriptions. What a row has for a member, by its kind:
///
///                numbers                   integers               texts
///     Number     1
///     Integer                              1
///     Boolean                              1, true unless 0
///     Color                                1
///     Text                                                        1
///     TextLines                            n, then n kinds        n
///     Direction  3
///     Point      3                         (1 if it may be missing: 0 where it is)
///     Points     3 each
///     EdgeShape  6 of a line: start, end   1: the shape, or 0 for none
///                13 of an arc: centre, normal, radius, start, end
///                3 of a point
///     View       16 of a view of its own   1: 0 the scene's, 1 none, 2 its own
///
/// A member that may be missing and is not a point, an edge or a view has its default there.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/calls/arguments.h"

namespace host {

/// What is left of rows that stand one behind the other. Past their end there are zeros and empty
/// texts: no row is wrong.
struct Rows {
    std::span<const double> numbers;
    std::span<const int> integers;
    std::span<const std::wstring> texts;
};

/// Reads a call's arguments off the front of rows.
class PackedArguments : public Arguments {
public:
    PackedArguments(Rows& rows, const Matrix& sceneView) : rows_(rows), sceneView_(sceneView) {}

    double number(const char* name) override;
    int integer(const char* name, int otherwise) override;
    bool boolean(const char* name, bool otherwise) override;
    std::uint32_t color(const char* name) override;
    std::wstring text(const char* name) override;
    std::vector<PMITextLine> textLines(const char* name) override;
    Vec3 direction(const char* name) override;
    using Arguments::point;
    std::optional<Vec3> point(const char* name, Need need) override;
    void points(const char* name, std::span<Vec3> points) override;
    std::optional<Shape> shape(const char* name, Shapes shapes, Need need) override;
    CallView view() override;

private:
    double nextNumber();
    int nextInteger();
    /// Leaves alone what is past the end of the row.
    void read(std::span<double> numbers);
    std::wstring nextText();
    Vec3 nextVector();

    Rows& rows_;
    const Matrix& sceneView_;
};

/// A row that owns what it holds.
struct Row {
    std::vector<double> numbers;
    std::vector<int> integers;
    std::vector<std::wstring> texts;

    Rows rows() const { return {numbers, integers, texts}; }

    void add(const Vec3& p) { numbers.insert(numbers.end(), p.begin(), p.end()); }
    void add(const std::optional<Shape>& shape);
    /// A view of the call's own, or none.
    void add(const CallView& view);
    void add(const std::vector<PMITextLine>& lines);
};

} // namespace host
