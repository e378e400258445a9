// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace kelmo::host {

// A path as the file system takes it; texts are UTF-8.
std::filesystem::path NativePath(const std::string& path);

// Whether a path is a pattern of numbers ("%04d") rather than a file.
bool IsNumberPattern(const std::string& path);

// The file that a pattern means for a number; empty unless the pattern holds exactly one number.
std::string NumberedFile(const std::string& pattern, int64_t number);

// Whether a path can be opened again and gives the same: not so standard input ("-"), named pipes
// and devices.
bool CanBeReadAgain(const std::string& path);

}  // namespace kelmo::host
