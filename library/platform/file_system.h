// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Files and folders by UTF-8 path, on every system. No exception leaves these functions, whatever
/// the path or the disk; on Linux a path is passed on byte by byte, also one that is not UTF-8.
/// Callable from any thread.
namespace kelmo {

/// The system's own form of a UTF-8 path (wide characters on Windows), and back.
std::filesystem::path NativePath(std::string_view path);
std::string Utf8Path(const std::filesystem::path& path);

struct FolderEntry {
    /// Name without folder.
    std::string name;
    /// Links are followed: a link to a folder is a folder.
    bool isFolder = false;
    /// A file to read, links followed: no folder, pipe or device.
    bool isRegular = false;
};

/// The entries of a folder without "." and "..", ordered by the bytes of their names so that every
/// machine lists alike. Empty for what is no folder; one that cannot be read, or not to its end, is
/// named in the log too.
std::vector<FolderEntry> ListFolder(std::string_view folder);

/// All bytes of a file. False, and empty bytes, for what cannot be read (a folder, say).
bool ReadWholeFile(std::string_view path, std::string& bytes);

/// True for anything but a folder.
bool FileExists(std::string_view path);
bool FolderExists(std::string_view path);

/// One spelling for all paths to the same place, links resolved; empty when there is none.
std::string CanonicalPath(std::string_view path);

/// Everything up to and including the last "/" or "\"; empty without one.
std::string FolderOf(std::string_view path);

}  // namespace kelmo
