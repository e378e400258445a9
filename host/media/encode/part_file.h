// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>

namespace kelmo::host {

// The name of a file while it is being written: "<path>.part" becomes "<path>" in Commit and
// vanishes in Discard. What is there and no regular file (a named pipe, /dev/null) is written
// itself, and stays what it is.
class PartFile {
public:
    // Throws MediaError if the folder is missing or the path cannot be a file.
    explicit PartFile(const std::string& path);

    const std::string& Path() const { return path; }
    const std::string& PartPath() const { return partPath; }
    bool Direct() const { return direct; }

    // Fills it with these bytes; what was begun is discarded on failure. Throws MediaError.
    void Write(const void* bytes, size_t size);

    void Commit();  // throws MediaError
    void Discard() noexcept;

    // The error of an attempt to open the file, as a sentence. Always throws.
    [[noreturn]] void FailToOpen(int systemError) const;

private:
    std::string path;
    std::string partPath;
    bool direct;
};

// Throws MediaError "cannot write '<path>': <reason>".
[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason);

}  // namespace kelmo::host
