// A finished annotation as a plain record: everything that its getters tell.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "support/rigid.h"

namespace dorvale::test {

/// One thing that a getter tells.
struct Field {
    /// What a motion does to the numbers. `InPlane` is what the plane's own axes decide.
    enum class Role { Point, Direction, Number, InPlane };

    std::string name;
    Role role = Role::Number;
    std::vector<double> numbers;
    std::wstring text;

    bool operator==(const Field&) const = default;
};

/// The elements stand in the annotation's order, and each begins with its kind.
struct Annotation {
    std::vector<Field> fields;

    bool operator==(const Annotation&) const = default;
};

Annotation read(const Ank_PMI& pmi);
Annotation read(const Ank_CurveEntity& curve);

/// One element a line.
std::ostream& operator<<(std::ostream& out, const Annotation& annotation);

/// The annotation with its points and directions moved.
Annotation moved(const Annotation& annotation, const Rigid& motion);

/// The annotation carried through its definition plane into the model, without what the plane's own
/// axes decide (an arc's parameters, say: it is told by its ends, centre and normal).
Annotation inModel(const Ank_PMI& pmi);

/// Fails at the caller's line: numbers may differ by the tolerance, anything else not at all.
void ExpectAnnotationNear(const Annotation& actual, const Annotation& expected, double tolerance,
                          const char* file = __builtin_FILE(), int line = __builtin_LINE());

// Single parts

/// A line's two ends, a polyline's points, or an arc's start, end and centre.
std::vector<Vec> pointsOf(const Ank_CurveEntity& curve);
std::vector<Vec> leaderPoints(const Ank_PMI& pmi, std::size_t i);
std::vector<Vec> extensionPoints(const Ank_PMI& pmi, std::size_t i);
/// The first line of the last text block; empty where there is none.
std::wstring valueText(const Ank_PMI& pmi);

} // namespace dorvale::test
