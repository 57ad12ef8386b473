/// @file
/// What differs from one system to the next.
#pragma once

#include <filesystem>

namespace host {

bool stderrIsTerminal();

/// Lets bytes written to the standard output pass unchanged.
void makeStdoutBinary();

/// Whether pictures can be turned into PNGs here.
bool canConvertToPng();

/// Turns an SVG file into a PNG file.
bool convertToPng(const std::filesystem::path& svg, const std::filesystem::path& png);

} // namespace host
