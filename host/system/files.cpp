#include "host/system/files.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestScene = std::size_t{256} << 20;
constexpr std::size_t kReadAtOnce = std::size_t{1} << 20;

[[noreturn]] void fail(const fs::path& path, const std::string& what) {
    throw FileError(path.string() + ": " + what);
}

/// What the system says about the operation that has just failed.
std::string reason() { return errno == 0 ? "" : ": " + std::generic_category().message(errno); }

void writeBytes(const fs::path& path, std::string_view bytes) {
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        fail(path, "cannot be written" + reason());
    }
}

/// Devices and pipes are written where they are: another file must not take their place.
bool isReplaceable(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return !fs::exists(status) || fs::is_regular_file(status);
}

} // namespace

std::string readSceneFile(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
        fail(path, "is a directory");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        fail(path, "cannot be read" + reason());
    }
    std::string bytes;
    while (file) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kReadAtOnce);
        file.read(bytes.data() + size, static_cast<std::streamsize>(kReadAtOnce));
        bytes.resize(size + static_cast<std::size_t>(file.gcount()));
        if (bytes.size() > kLargestScene) {
            fail(path, "a scene has at most 256 MiB");
        }
    }
    if (file.bad()) {
        fail(path, "cannot be read" + reason());
    }
    return bytes;
}

void writeFile(const fs::path& path, std::string_view bytes) {
    if (!isReplaceable(path)) {
        writeBytes(path, bytes);
        return;
    }
    const fs::path temporary = temporaryFor(path);
    try {
        writeBytes(temporary, bytes);
    } catch (const FileError&) {
        const std::string why = reason();
        std::error_code ignored;
        fs::remove(temporary, ignored);
        fail(path, "cannot be written" + why);
    }
    moveInto(temporary, path);
}

void moveInto(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (!error) {
        return;
    }
    std::error_code ignored;
    fs::remove(from, ignored);
    fail(to, "cannot be written: " + error.message());
}

fs::path temporaryFor(const fs::path& path) {
    fs::path temporary = path;
    temporary += ".part";
    return temporary;
}

} // namespace host
