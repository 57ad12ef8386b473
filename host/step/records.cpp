#include "host/step/records.h"

#include <cstring>
#include <type_traits>

namespace host::step {
namespace {

template <class T, class R>
concept Record = std::is_same_v<std::remove_const_t<T>, R>;

// One list of fields for both directions: `a` is a `Packer` or an `Unpacker`.

template <class A, Record<Edge> T> void fields(A& a, T& v) {
    a(v.kind, v.start, v.end, v.centre, v.axis, v.radius, v.length, v.points);
}

template <class A, Record<Face> T> void fields(A& a, T& v) {
    a(v.entity, v.kind, v.origin, v.axis, v.radius, v.minorRadius, v.halfAngle, v.hollow, v.part,
      v.edges, v.section, v.points);
}

template <class A, Record<Feature> T> void fields(A& a, T& v) {
    a(v.faces, v.edges, v.points, v.others);
}

template <class A, Record<Dimension> T> void fields(A& a, T& v) {
    a(v.entity, v.kind, v.name, v.nominal, v.upper, v.lower, v.limits, v.fit, v.unit, v.unitSize,
      v.decimals, v.modifier, v.remarks, v.first, v.second);
}

template <class A, Record<Model> T> void fields(A& a, T& v) {
    a(v.title, v.unit, v.dimensions, v.planes, v.hull, v.parts, v.tolerances, v.datums);
}

template <class A, Record<PictureEdge> T> void fields(A& a, T& v) { a(v.edge, v.hidden); }

template <class A, Record<Picture> T> void fields(A& a, T& v) { a(v.edges, v.fromMesh); }

template <class A, Record<Body> T> void fields(A& a, T& v) {
    a(v.positions, v.triangles, v.faces, v.curves, v.edges);
}

constexpr auto lastOf(CurveKind) { return CurveKind::Other; }
constexpr auto lastOf(SurfaceKind) { return SurfaceKind::Other; }
constexpr auto lastOf(DimensionKind) { return DimensionKind::AngularLocation; }
constexpr auto lastOf(Modifier) { return Modifier::Basic; }

template <class T>
concept Number = std::is_arithmetic_v<T> || std::is_same_v<T, Vec3>;

/// Writes values one behind the other, as they stand in memory: at both ends of the pipe there is
/// the same program.
class Packer {
public:
    template <class... T> void operator()(const T&... values) { (pack(values), ...); }
    std::string take() { return std::move(bytes_); }

private:
    template <class T> void pack(const T& value) {
        if constexpr (Number<T> || std::is_enum_v<T>) {
            bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
        } else {
            fields(*this, value);
        }
    }
    template <class T> void pack(const std::vector<T>& list) {
        pack(list.size());
        for (const T& item : list) {
            pack(item);
        }
    }
    template <class T> void pack(const std::optional<T>& value) {
        pack(value.has_value());
        if (value) {
            pack(*value);
        }
    }
    void pack(const std::string& text) {
        pack(text.size());
        bytes_ += text;
    }
    void pack(const std::map<std::string, int>& counts) {
        pack(counts.size());
        for (const auto& [name, count] : counts) {
            (*this)(name, count);
        }
    }

    std::string bytes_;
};

/// Reads what a `Packer` wrote, and refuses what it cannot have written.
class Unpacker {
public:
    explicit Unpacker(std::string_view bytes) : rest_(bytes) {}
    template <class... T> void operator()(T&... values) { (unpack(values), ...); }
    bool atEnd() const { return rest_.empty(); }

private:
    template <class T> void unpack(T& value) {
        if constexpr (std::is_same_v<T, bool>) {
            value = take(1)[0] != 0;
        } else if constexpr (std::is_enum_v<T>) {
            const auto number = static_cast<std::uint8_t>(take(1)[0]);
            if (number > static_cast<std::uint8_t>(lastOf(T{}))) {
                refuse();
            }
            value = static_cast<T>(number);
        } else if constexpr (Number<T>) {
            std::memcpy(&value, take(sizeof value).data(), sizeof value);
        } else {
            fields(*this, value);
        }
    }
    template <class T> void unpack(std::vector<T>& list) {
        list.clear();
        for (std::size_t count = size(); count > 0; --count) {
            unpack(list.emplace_back());
        }
    }
    template <class T> void unpack(std::optional<T>& value) {
        bool given = false;
        unpack(given);
        value.reset();
        if (given) {
            unpack(value.emplace());
        }
    }
    void unpack(std::string& text) { text = take(size()); }
    void unpack(std::map<std::string, int>& counts) {
        for (std::size_t count = size(); count > 0; --count) {
            std::string name;
            unpack(name);
            unpack(counts[name]);
        }
    }
    std::size_t size() {
        std::size_t count = 0;
        unpack(count);
        return count;
    }
    std::string_view take(std::size_t count) {
        if (count > rest_.size()) {
            refuse();
        }
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    [[noreturn]] static void refuse() { throw StepError("the records are damaged"); }

    std::string_view rest_;
};

template <class T> std::string packed(const T& value) {
    Packer pack;
    pack(value);
    return pack.take();
}

template <class T> T unpacked(std::string_view bytes) {
    T value;
    Unpacker unpack(bytes);
    unpack(value);
    if (!unpack.atEnd()) {
        throw StepError("the records are damaged");
    }
    return value;
}

} // namespace

bool Edge::closed() const {
    const Vec3 gap = end - start;
    return kind == CurveKind::Circle && dot(gap, gap) <= 1e-12 * radius * radius;
}

std::string packModel(const Model& model) { return packed(model); }

std::string packPicture(const Picture& picture) { return packed(picture); }

std::string packBody(const Body& body) { return packed(body); }

Model unpackModel(std::string_view bytes) { return unpacked<Model>(bytes); }

Picture unpackPicture(std::string_view bytes) { return unpacked<Picture>(bytes); }

Body unpackBody(std::string_view bytes) { return unpacked<Body>(bytes); }

} // namespace host::step
