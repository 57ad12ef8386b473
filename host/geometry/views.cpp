#include "host/geometry/views.h"

namespace host {
namespace {

/// The view with these axes on its screen; the third one points to the viewer.
Matrix viewOf(const Vec3& right, const Vec3& up) {
    const Vec3 toViewer = cross(right, up);
    Matrix view{};
    for (std::size_t row = 0; row < 3; ++row) {
        view[row * 4 + 0] = right[row];
        view[row * 4 + 1] = up[row];
        view[row * 4 + 2] = toViewer[row];
    }
    view[15] = 1;
    return view;
}

} // namespace

std::optional<Matrix> standardView(std::string_view name) {
    if (name == "front") {
        return viewOf({1, 0, 0}, {0, 0, 1});
    }
    if (name == "top") {
        return viewOf({1, 0, 0}, {0, 1, 0});
    }
    if (name == "right") {
        return viewOf({0, 1, 0}, {0, 0, 1});
    }
    if (name == "bottom") {
        return viewOf({1, 0, 0}, {0, -1, 0});
    }
    if (name == "back") {
        return viewOf({-1, 0, 0}, {0, 0, 1});
    }
    if (name == "left") {
        return viewOf({0, -1, 0}, {0, 0, 1});
    }
    if (name == "iso") {
        return viewOf(unit({1, 1, 0}), unit({-1, 1, 2}));
    }
    return std::nullopt;
}

} // namespace host
