// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/font_catalogue.h"

#include <ft2build.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include FT_FREETYPE_H

namespace kelmo::host {

namespace fs = std::filesystem;

namespace {

std::string LowerCase(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

bool IsFontFile(const fs::path& path) {
    const std::string extension = LowerCase(path.extension().string());
    return extension == ".ttf" || extension == ".otf" || extension == ".ttc" || extension == ".otc";
}

void AddFaces(FT_Library library, const std::string& path, std::vector<FontFile>& files) {
    FT_Long count = 1;
    for (FT_Long i = 0; i < count; ++i) {
        FT_Face face = nullptr;
        if (FT_New_Face(library, path.c_str(), i, &face) != 0) {
            return;
        }
        count = face->num_faces;
        if (FT_IS_SCALABLE(face) && face->family_name) {
            files.push_back({path, static_cast<int32_t>(i), face->family_name,
                             (face->style_flags & FT_STYLE_FLAG_BOLD) != 0,
                             (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0});
        }
        FT_Done_Face(face);
    }
}

std::vector<std::string> FontPaths(const std::string& folder) {
    std::vector<std::string> paths;
    std::error_code error;
    fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied,
                                        error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        std::error_code ignored;
        if (IsFontFile(at->path()) && at->is_regular_file(ignored)) {
            paths.push_back(at->path().string());
        }
    }
    return paths;
}

int StyleDistance(const FontFile& file, bool bold, bool italic) {
    return (file.isBold != bold) + 2 * (file.isItalic != italic);
}

/// How little a face suits as a stand-in for any text: plain families of wide coverage come first.
int FallbackDistance(const FontFile& file, bool bold) {
    const std::string family = LowerCase(file.family);
    const bool isSans = family.rfind("noto sans", 0) == 0 || family == "dejavu sans";
    const bool isText = isSans || family.rfind("noto ", 0) == 0;
    const bool isFixed = family.find("mono") != std::string::npos;
    return 8 * StyleDistance(file, bold, false) + (isSans ? 0 : isText ? 1 : 2) + 4 * isFixed;
}

}  // namespace

FontCatalogue::FontCatalogue(const std::vector<std::string>& folders) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        return;
    }
    std::vector<std::string> paths;
    for (const std::string& folder : folders) {
        const std::vector<std::string> found = FontPaths(folder);
        paths.insert(paths.end(), found.begin(), found.end());
    }
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) {
        AddFaces(library, path, files);
    }
    FT_Done_FreeType(library);
}

const FontCatalogue& FontCatalogue::System() {
    static const FontCatalogue catalogue(SystemFolders());
    return catalogue;
}

std::vector<std::string> FontCatalogue::SystemFolders() {
    std::vector<std::string> folders = {"/usr/share/fonts", "/usr/local/share/fonts",
                                        "/Library/Fonts", "/System/Library/Fonts"};
    if (const char* home = std::getenv("HOME")) {
        folders.push_back(std::string(home) + "/.local/share/fonts");
        folders.push_back(std::string(home) + "/.fonts");
    }
    if (const char* windows = std::getenv("WINDIR")) {
        folders.push_back(std::string(windows) + "\\Fonts");
    }
    return folders;
}

const FontFile* FontCatalogue::Find(const std::string& family, bool bold, bool italic) const {
    const std::string wanted = LowerCase(family);
    const FontFile* best = nullptr;
    for (const FontFile& file : files) {
        if (LowerCase(file.family) == wanted &&
            (!best || StyleDistance(file, bold, italic) < StyleDistance(*best, bold, italic))) {
            best = &file;
        }
    }
    return best;
}

std::shared_ptr<Font> FontCatalogue::FindCovering(uint32_t codepoint, bool bold) const {
    std::vector<const FontFile*> candidates;
    for (const FontFile& file : files) {
        candidates.push_back(&file);
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [bold](const FontFile* a, const FontFile* b) {
                         return FallbackDistance(*a, bold) < FallbackDistance(*b, bold);
                     });
    for (const FontFile* file : candidates) {
        std::shared_ptr<Font> font = Font::Open(file->path, file->faceIndex);
        if (font && font->Covers(codepoint)) {
            return font;
        }
    }
    return nullptr;
}

}  // namespace kelmo::host
