#include "host/system/console.h"

#include <chrono>
#include <iostream>

#include "host/system/files.h"
#include "host/system/platform.h"

namespace host {
namespace {

constexpr const char* kClearLine = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine() : shown_(stderrIsTerminal()) {}

ProgressLine::~ProgressLine() {
    if (written_) {
        std::cerr << kClearLine << std::flush;
    }
}

std::function<void(std::size_t, std::size_t)> ProgressLine::counter() {
    if (!shown_) {
        return {};
    }
    return [this](std::size_t done, std::size_t all) {
        constexpr std::size_t kEvery = 1000;
        if (done % kEvery == 0) {
            say(std::to_string(done) + " of " + std::to_string(all) + " annotations");
        }
    };
}

std::function<void()> ProgressLine::doing(const std::string& what) {
    if (!shown_) {
        return {};
    }
    return [this, what, start = std::chrono::steady_clock::now()] {
        const auto passed = std::chrono::duration_cast<std::chrono::seconds>(
            std::chrono::steady_clock::now() - start);
        say(what + ", " + std::to_string(passed.count()) + " s");
    };
}

void ProgressLine::say(const std::string& text) {
    std::cerr << kClearLine << text << std::flush;
    written_ = true;
}

void print(std::string_view bytes) {
    makeStdoutBinary();
    if (!std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        throw FileError("standard output: cannot be written");
    }
}

} // namespace host
