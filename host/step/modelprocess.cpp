#include "host/step/modelprocess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/step/read/read.h"

namespace host::step {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds kTick{100};
/// A mesh is quick; this is for one that does not end.
constexpr Milliseconds kMeshLines{60000};
/// What an answer starts with.
enum class Outcome : char { Done = 'd', Failed = 'f' };

/// A process that works for another one ends with it, however that ends.
void endWithParent() {
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
}

/// Sends bytes to a process that may be gone.
bool sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR) {
            return false;
        }
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }
    return true;
}

/// Both ends of a pipe that no other program inherits.
struct Pipe {
    Pipe() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
            throw StepError("cannot be read: no pipe is left");
        }
    }
    int reading() const { return ends[0]; }
    int writing() const { return ends[1]; }
    std::array<int, 2> ends{-1, -1};
};

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return true;
}

/// Whether bytes, or an end, can be read within a tick.
bool readable(int file, Milliseconds time) {
    pollfd waited{file, POLLIN, 0};
    return poll(&waited, 1, static_cast<int>(time.count())) > 0;
}

/// Reads that many bytes; fewer at the end of the file.
std::string readBytes(int file, std::size_t count) {
    std::string bytes(count, '\0');
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = read(file, bytes.data() + done, count - done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

/// A pipe gives bytes as they come; this waits for all of them, or for the time to run out.
std::optional<std::string> readInTime(int file, std::size_t count, Clock::time_point deadline,
                                      const Waiting& waiting) {
    std::string bytes;
    while (bytes.size() < count) {
        if (Clock::now() >= deadline) {
            return std::nullopt;
        }
        if (!readable(file, kTick)) {
            if (waiting) {
                waiting();
            }
            continue;
        }
        std::array<char, 1 << 16> block{};
        const ssize_t got = read(file, block.data(), std::min(block.size(), count - bytes.size()));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        bytes.append(block.data(), static_cast<std::size_t>(got));
    }
    return bytes;
}

/// An answer: its outcome, its length, its bytes.
void sendAnswer(int file, Outcome outcome, std::string_view bytes) {
    const std::uint64_t size = bytes.size();
    std::string head(1, static_cast<char>(outcome));
    head.append(reinterpret_cast<const char*>(&size), sizeof size);
    if (!writeAll(file, head) || !writeAll(file, bytes)) {
        _exit(1);
    }
}

std::optional<std::string> receiveAnswer(int file, Clock::time_point deadline,
                                         const Waiting& waiting) {
    std::uint64_t size = 0;
    const auto head = readInTime(file, 1 + sizeof size, deadline, waiting);
    if (!head) {
        return std::nullopt;
    }
    if (head->size() < 1 + sizeof size) {
        throw StepError("cannot be read: it makes the reader crash");
    }
    std::memcpy(&size, head->data() + 1, sizeof size);
    auto bytes = readInTime(file, size, deadline, waiting);
    if (bytes && bytes->size() < size) {
        throw StepError("cannot be read: it makes the reader crash");
    }
    if (bytes && head->front() == static_cast<char>(Outcome::Failed)) {
        throw StepError(*bytes);
    }
    return bytes;
}

/// Answers with what `make` makes, or with what went wrong.
template <class Make> void answerWith(int file, const Make& make) {
    try {
        sendAnswer(file, Outcome::Done, make());
    } catch (const std::bad_alloc&) {
        sendAnswer(file, Outcome::Failed, "cannot be read: it takes too much memory");
    } catch (const std::exception& error) {
        sendAnswer(file, Outcome::Failed, error.what());
    } catch (...) {
        sendAnswer(file, Outcome::Failed, "cannot be read: its geometry is damaged");
    }
}

void limit(int resource, rlim_t amount) {
    rlimit current{};
    getrlimit(static_cast<__rlimit_resource>(resource), &current);
    current.rlim_cur = std::min(amount, current.rlim_max);
    setrlimit(static_cast<__rlimit_resource>(resource), &current);
}

/// No output, no core files, no more than its share.
void confine(const Limits& limits) {
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
    }
    limit(RLIMIT_CORE, 0);
#if !defined(__SANITIZE_ADDRESS__)
    // A sanitizer's shadow takes terabytes of address space.
    limit(RLIMIT_AS, rlim_t{limits.memory} << 20);
#endif
    limit(RLIMIT_CPU, static_cast<rlim_t>(limits.time.count()) * 4);
}

struct Request {
    /// The part's faces and edges, or its lines in a view.
    bool body = false;
    Vec3 right{};
    Vec3 up{};
};

/// The lines of a view from a process of its own, because nothing else ends a removal of hidden
/// lines that takes too long. Nothing where it did not answer in time.
std::optional<std::string> linesFrom(const Part& part, const Request& request, bool fromMesh,
                                     Milliseconds time) {
    const Pipe pipe;
    const pid_t helper = fork();
    if (helper == 0) {
        endWithParent();
        close(pipe.reading());
        answerWith(pipe.writing(),
                   [&] { return packPicture(part.picture(request.right, request.up, fromMesh)); });
        _exit(0);
    }
    close(pipe.writing());
    std::optional<std::string> answer;
    try {
        if (helper > 0) {
            answer = receiveAnswer(pipe.reading(), Clock::now() + time, {});
        }
    } catch (const StepError&) {
        // The mesh may still do.
    }
    close(pipe.reading());
    if (helper > 0) {
        kill(helper, SIGKILL);
        waitpid(helper, nullptr, 0);
    }
    return answer;
}

std::string linesOf(const Part& part, const Request& request, const Limits& limits) {
    if (auto exact = linesFrom(part, request, /*fromMesh=*/false, limits.exactLines)) {
        return *exact;
    }
    if (auto mesh = linesFrom(part, request, /*fromMesh=*/true, kMeshLines)) {
        return *mesh;
    }
    throw StepError("the lines of a view cannot be found");
}

/// The life of the process: the records, then the lines of one view after the other.
void serve(const std::filesystem::path& file, const Limits& limits, int requests, int answers) {
    confine(limits);
    std::optional<Part> part;
    answerWith(answers, [&] {
        part.emplace(file);
        return packModel(part->model());
    });
    while (part) {
        const std::string bytes = readBytes(requests, sizeof(Request));
        if (bytes.size() < sizeof(Request)) {
            return;
        }
        Request request;
        std::memcpy(&request, bytes.data(), sizeof request);
        answerWith(answers, [&] {
            return request.body ? packBody(part->body()) : linesOf(*part, request, limits);
        });
    }
}

} // namespace

ModelProcess::ModelProcess(const std::filesystem::path& file, const Limits& limits)
    : limits_(limits) {
    const Pipe toChild;
    const Pipe fromChild;
    const pid_t child = fork();
    if (child == 0) {
        // What it starts ends with its group.
        setpgid(0, 0);
        endWithParent();
        close(toChild.writing());
        close(fromChild.reading());
        serve(file, limits, toChild.reading(), fromChild.writing());
        _exit(0);
    }
    close(toChild.reading());
    close(fromChild.writing());
    requests_ = toChild.writing();
    answers_ = fromChild.reading();
    if (child < 0) {
        throw StepError("cannot be read: no process is left");
    }
    process_ = child;
    setpgid(process_, process_);
}

ModelProcess::~ModelProcess() { end(); }

void ModelProcess::end() {
    if (requests_ >= 0) {
        close(requests_);
    }
    if (answers_ >= 0) {
        close(answers_);
    }
    requests_ = answers_ = -1;
    if (process_ <= 0) {
        return;
    }
    kill(-process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
}

std::string ModelProcess::answer(const Waiting& waiting, Milliseconds time) {
    auto bytes = receiveAnswer(answers_, Clock::now() + time, waiting);
    if (bytes) {
        return std::move(*bytes);
    }
    end();
    throw StepError("cannot be read within " +
                    std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time).count()) +
                    " s");
}

Model ModelProcess::model(const Waiting& waiting) {
    return unpackModel(answer(waiting, limits_.time));
}

template <class Request>
std::string ModelProcess::ask(const Request& request, const Waiting& waiting, Milliseconds time) {
    const std::string_view bytes(reinterpret_cast<const char*>(&request), sizeof request);
    if (!sendAll(requests_, bytes)) {
        throw StepError("the lines of a view cannot be found");
    }
    return answer(waiting, time);
}

Picture ModelProcess::picture(const Vec3& right, const Vec3& up, const Waiting& waiting) {
    const Request request{/*body=*/false, right, up};
    return unpackPicture(ask(request, waiting, limits_.exactLines + 2 * kMeshLines));
}

Body ModelProcess::body(const Waiting& waiting) {
    return unpackBody(ask(Request{/*body=*/true, {}, {}}, waiting, limits_.time));
}

} // namespace host::step
