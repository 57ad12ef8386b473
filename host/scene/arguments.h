/// @file
/// The arguments of a call as a scene has them.
#pragma once

#include "host/calls/arguments.h"
#include "host/scene/scene.h"

namespace host {

/// Reads the members of a call; throws `SceneError` where one is missing or is not what the call
/// asks for.
class SceneArguments : public Arguments {
public:
    SceneArguments(const Scene& scene, Object& members) : scene_(scene), members_(members) {}

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
    std::optional<Value> member(const char* name, Need need);

    const Scene& scene_;
    Object& members_;
};

} // namespace host
