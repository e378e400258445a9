// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/text/font.h"

namespace kelmo::host {

/// One face that lies in the font folders.
struct FontFile {
    std::string path;
    int32_t faceIndex = 0;
    std::string family;
    bool isBold = false;
    bool isItalic = false;
};

/// The fonts of this machine that have outlines. Reading the folders takes some tenths of a second
/// at most and happens once. Which characters a font has is read when it is first asked for, and
/// kept (some ten kilobytes a font). The object serves all threads.
class FontCatalogue {
public:
    /// Reads `folders` with their sub-folders; what is no font, or cannot be read, is passed over.
    explicit FontCatalogue(const std::vector<std::string>& folders);
    ~FontCatalogue();

    /// The fonts of the system and of the user, read on first use.
    static const FontCatalogue& System();
    static std::vector<std::string> SystemFolders();

    /// The face of a family (case does not matter) that comes nearest to the style, or null.
    const FontFile* Find(const std::string& family, bool bold, bool italic) const;
    /// A font that has all of the characters, upright sans serif first, or null.
    std::shared_ptr<Font> FindCovering(const std::vector<uint32_t>& codepoints, bool bold) const;

    const std::vector<FontFile>& Files() const { return files; }

private:
    class Coverage;

    std::vector<FontFile> files;                            ///< in order of path and face
    std::array<std::vector<size_t>, 2> byFallbackDistance;  ///< places in `files`; plain and bold
    std::unique_ptr<Coverage> coverage;
};

}  // namespace kelmo::host
