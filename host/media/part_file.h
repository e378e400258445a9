// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kelmo::host {

// Private to this folder: the name of a file while it is being written. "<path>.part" becomes
// "<path>" in Commit and vanishes in Discard.
class PartFile {
public:
    // Throws MediaError if the folder is missing or the path cannot be a file.
    explicit PartFile(const std::string& path);

    const std::string& Path() const { return path; }
    const std::string& PartPath() const { return partPath; }

    void Commit();  // throws MediaError
    void Discard() noexcept;

    // The error of an attempt to open the file, as a sentence. Always throws.
    [[noreturn]] void FailToOpen(int systemError) const;

private:
    std::string path;
    std::string partPath;
};

// Throws MediaError "cannot write '<path>': <reason>".
[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason);

}  // namespace kelmo::host
