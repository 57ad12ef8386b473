/// @file
/// What a call is given: members with names, asked for in one fixed order.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include <dorvale/dorvale.h>

#include "host/geometry/edges.h"

namespace host {

/// Whether a call can do without a member.
struct Need {
    bool isNeeded = true;
    /// The member on which that hangs: a boolean that is true, or an edge that is an arc, needs it.
    const char* with = nullptr;

    /// Whether that is so for any values of the other members.
    bool always() const { return isNeeded && with == nullptr; }
};
inline constexpr Need kAlways{true, nullptr};
inline constexpr Need kNotNeeded{false, nullptr};

/// What may stand where a call asks for an edge: any of these.
using Shapes = unsigned;
inline constexpr Shapes kLine = 1;
inline constexpr Shapes kArc = 2;
inline constexpr Shapes kPoint = 4;

/// What an edge argument turns out to be: a line, an arc, or a point in an edge's place.
using Shape = std::variant<LineEdge, ArcEdge, Vec3>;

/// A curve that a call is handed: as the model has it, in double precision, and as the library
/// takes it. Nothing and null where there is none.
struct Curve {
    std::optional<Shape> shape;
    Ank_CurveEntity* entity = nullptr;

    /// Null for any other curve.
    Ank_Line* line() const {
        const bool isLine = shape && std::holds_alternative<LineEdge>(*shape);
        return isLine ? static_cast<Ank_Line*>(entity) : nullptr;
    }
};

/// The view of a call.
struct CallView {
    /// What the call is handed; a null pointer where there is none.
    std::optional<Matrix> matrix;
    /// What its placement record holds.
    Matrix placement{};

    double* pointer() { return matrix ? matrix->data() : nullptr; }
};

/// What most calls take besides the geometry.
struct Placement {
    _ank_locate locate{};
    double height = 0;
    CallView view;
    int status = 0;

    double* viewMatrix() { return view.pointer(); }
};

/// A status that no call writes, so that one that is left alone can be told from one that is set.
inline constexpr int kUntouched = -1;

/// The arguments of one call. Where they come from is up to the derived class; a call asks for
/// every member that it knows, in one order, whatever their values. Owns the curves that it hands
/// out.
class Arguments {
public:
    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    virtual ~Arguments() = default;

    virtual double number(const char* name) = 0;
    virtual int integer(const char* name, int otherwise) = 0;
    virtual bool boolean(const char* name, bool otherwise) = 0;
    /// Red in the lowest byte, then green, then blue.
    virtual std::uint32_t color(const char* name) = 0;
    /// Empty where the member is missing.
    virtual std::wstring text(const char* name) = 0;
    /// The lines of a note.
    virtual std::vector<PMITextLine> textLines(const char* name) = 0;
    virtual Vec3 direction(const char* name) = 0;
    virtual std::optional<Vec3> point(const char* name, Need need) = 0;
    /// A list of points of a fixed length.
    virtual void points(const char* name, std::span<Vec3> points) = 0;
    virtual std::optional<Shape> shape(const char* name, Shapes shapes, Need need) = 0;
    virtual CallView view() = 0;

    Vec3 point(const char* name) { return point(name, kAlways).value_or(Vec3{}); }
    /// A point becomes a polyline of one point.
    Curve curve(const char* name, Shapes shapes, Need need = kAlways);
    int status() { return integer("status", kUntouched); }
    Placement placement();

private:
    std::vector<std::unique_ptr<Ank_CurveEntity>> curves_;
};

} // namespace host
