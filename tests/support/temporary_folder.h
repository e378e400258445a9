// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kelmo::test {

/// A folder of its own for one test, removed with everything in it when the object goes. Paths are
/// UTF-8 and relative to it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Absolute path without separator at its end.
    const std::string& Path() const { return path; }
    std::string Path(std::string_view relative) const;
    /// Writes a file, with the folders above it. Returns its absolute path.
    std::string Write(std::string_view relative, std::string_view bytes) const;
    /// Makes a folder, with those above it. Returns its absolute path.
    std::string MakeFolder(std::string_view relative) const;
    /// Makes a symbolic link to a folder.
    void LinkFolder(std::string_view relative, std::string_view absoluteTarget) const;

private:
    std::string path;
};

}  // namespace kelmo::test
