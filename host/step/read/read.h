/// @file
/// Reading a STEP file with OCCT. Runs in a process of its own (`modelprocess.h`): a damaged file
/// may end it.
#pragma once

#include <filesystem>
#include <memory>

#include "host/step/records.h"

namespace host::step {

/// A file's part: its records, and its shape for pictures and pages.
class Part {
public:
    /// Throws `StepError`.
    explicit Part(const std::filesystem::path& file);
    ~Part();

    const Model& model() const;
    /// How it looks along a view's axes. Takes its time.
    Picture picture(const Vec3& right, const Vec3& up, bool fromMesh) const;
    Body body() const;

private:
    struct Content;
    std::unique_ptr<Content> content_;
};

} // namespace host::step
