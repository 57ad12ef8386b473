// A finished annotation: everything that its getters tell, and what of it a viewer draws.
#pragma once

#include <algorithm>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "support/rigid.h"

namespace dorvale::test {

/// One thing that a getter tells.
struct Field {
    /// What the numbers are. `InPlane` hangs on the plane's own axes; `Start` begins an element.
    enum class Role { Start, Point, Direction, Number, InPlane };

    Role role = Role::Number;
    std::string name;
    std::vector<double> numbers;
    std::wstring text;

    bool operator==(const Field&) const = default;
};

/// The elements stand in the annotation's order.
struct Annotation {
    std::vector<Field> fields;

    bool operator==(const Annotation&) const = default;
};

Annotation read(const Ank_PMI& pmi);
Annotation read(const Ank_CurveEntity& curve);

/// One element a line.
std::ostream& operator<<(std::ostream& out, const Annotation& annotation);

/// The annotation carried through its definition plane into a frame of the model, without what the
/// plane's own axes decide (an arc's parameters, say: it is told by its ends, centre and normal).
Annotation seenFrom(const Rigid& frame, const Ank_PMI& pmi);

/// The first field that differs: numbers by more than a tolerance, anything else at all. Empty
/// where there is none.
std::string difference(const Annotation& a, const Annotation& b, double tolerance);

/// A leader, a line or a text: its fields, by their names.
struct Element {
    std::vector<Field> fields;

    const std::vector<double>& numbers(std::string_view name, std::ptrdiff_t k = 0) const {
        const auto first = std::ranges::find(fields, name, &Field::name);
        return fields.at(static_cast<std::size_t>(first - fields.begin() + k)).numbers;
    }
    /// The k-th point or direction of a name.
    Vec vec(std::string_view name, std::ptrdiff_t k = 0) const {
        return Vec(numbers(name, k).data());
    }
    Vec from() const { return vec("point"); }
    Vec to() const { return vec("point", 1); }
    /// The text of a line, and the number after its sign.
    const std::wstring& line() const { return fields.at(0).text; }
    double number() const { return std::stod(line().substr(line().find_first_of(L"0123456789"))); }
};

/// What is drawn of an annotation, as seen from a frame.
struct Drawing {
    explicit Drawing(const Ank_PMI& pmi, const Rigid& in = {});

    Rigid frame;
    /// The definition plane, in the model. All else stands in the frame.
    Rigid plane;
    std::vector<Element> leaders;
    std::vector<Element> extensions;
    std::vector<Element> specials;
    std::vector<Element> blocks;
    /// The last line.
    Element text;
};

} // namespace dorvale::test
