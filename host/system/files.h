/// @file
/// Reading scenes and writing results, whole files at a time.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace host {

/// A file that cannot be read or written; the message names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The bytes of a scene's file, which may have up to 256 MiB.
std::string readSceneFile(const std::filesystem::path& path);

/// Writes a file or, when that fails, leaves what stood there before.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

/// Puts a finished file into another's place; removes it when that fails.
void moveInto(const std::filesystem::path& from, const std::filesystem::path& to);

/// Where a file is made before it takes its place.
std::filesystem::path temporaryFor(const std::filesystem::path& path);

} // namespace host
