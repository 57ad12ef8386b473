/// @file
/// A process that reads a STEP file, and finds its part's lines and faces. What happens to it is
/// told by one line: a damaged file may crash it, or keep it busy for ever.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

#include "host/step/records.h"

namespace host::step {

struct Limits {
    /// For reading.
    std::chrono::seconds time{120};
    /// Of address space, in MiB.
    std::size_t memory = 4096;
    /// For the exact lines of one view.
    std::chrono::milliseconds exactLines{5000};
};

/// Called now and then while the process works.
using Waiting = std::function<void()>;

class ModelProcess {
public:
    /// Starts reading.
    ModelProcess(const std::filesystem::path& file, const Limits& limits);
    ModelProcess(const ModelProcess&) = delete;
    ModelProcess& operator=(const ModelProcess&) = delete;
    /// Ends the process.
    ~ModelProcess();

    /// The file's records. Throws `StepError`.
    Model model(const Waiting& waiting = {});

    /// The part's faces and edges, after `model`. Throws `StepError`.
    Body body(const Waiting& waiting = {});

    /// The lines of a view, after `model`. Throws `StepError`.
    Picture picture(const Vec3& right, const Vec3& up, const Waiting& waiting = {});

private:
    template <class Request>
    std::string ask(const Request& request, const Waiting& waiting, std::chrono::milliseconds time);
    std::string answer(const Waiting& waiting, std::chrono::milliseconds time);
    void end();

    Limits limits_;
    int process_ = -1;
    int requests_ = -1;
    int answers_ = -1;
};

} // namespace host::step
