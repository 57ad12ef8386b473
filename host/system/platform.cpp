#include "host/system/platform.h"

#include <cstdlib>
#include <string>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#else
#include <unistd.h>
#endif

namespace host {
namespace {

constexpr const char* kPngWidth = "1600";

#if defined(_WIN32)

constexpr const char* kSilently = " >NUL 2>NUL";

/// One argument for the system's shell. A file name holds no quotation mark there.
std::string quoted(const std::filesystem::path& path) { return '"' + path.string() + '"'; }

/// The shell takes the outermost quotation marks away.
std::string wrapped(const std::string& command) { return '"' + command + '"'; }

#else

constexpr const char* kSilently = " >/dev/null 2>&1";

std::string quoted(const std::filesystem::path& path) {
    std::string result = "'";
    for (const char c : path.string()) {
        c == '\'' ? result += "'\\''" : result += c;
    }
    return result + "'";
}

std::string wrapped(const std::string& command) { return command; }

#endif

/// The program has one thread.
bool run(const std::string& command) {
    return std::system(wrapped(command).c_str()) == 0; // NOLINT(concurrency-mt-unsafe)
}

} // namespace

#if defined(_WIN32)

bool stderrIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

void makeStdoutBinary() { _setmode(_fileno(stdout), _O_BINARY); }

#else

bool stderrIsTerminal() { return isatty(STDERR_FILENO) != 0; }

void makeStdoutBinary() {}

#endif

bool canConvertToPng() { return run(std::string("rsvg-convert --version") + kSilently); }

bool convertToPng(const std::filesystem::path& svg, const std::filesystem::path& png) {
    return run(std::string("rsvg-convert --width=") + kPngWidth + " --keep-aspect-ratio --output=" +
               quoted(png) + ' ' + quoted(std::filesystem::absolute(svg)));
}

} // namespace host
