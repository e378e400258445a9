// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/font_catalogue.h"

#include <ft2build.h>
#include <hb.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <numeric>
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

/// Places in `files`, the best stand-in first.
std::vector<size_t> ByFallbackDistance(const std::vector<FontFile>& files, bool bold) {
    std::vector<int> distances;
    for (const FontFile& file : files) {
        distances.push_back(FallbackDistance(file, bold));
    }
    std::vector<size_t> order(files.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return distances[a] < distances[b]; });
    return order;
}

hb_set_t* ReadCharacters(const FontFile& file) {
    hb_set_t* characters = hb_set_create();
    if (hb_blob_t* blob = hb_blob_create_from_file_or_fail(file.path.c_str())) {
        hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(file.faceIndex));
        hb_face_collect_unicodes(face, characters);
        hb_face_destroy(face);
        hb_blob_destroy(blob);
    }
    return characters;
}

bool HasCharacter(const hb_set_t* characters, uint32_t codepoint) {
    // Fonts of symbols have theirs in a private area, and give them for the first 256 as well.
    return hb_set_has(characters, codepoint) ||
           (codepoint <= 0xFF && hb_set_has(characters, 0xF000 + codepoint));
}

}  // namespace

/// The characters of each font. A text in a script without a font asks all of them for each of its
/// characters.
class FontCatalogue::Coverage {
public:
    explicit Coverage(size_t fontCount) : charactersOf(fontCount) {}
    ~Coverage() {
        for (hb_set_t* characters : charactersOf) {
            hb_set_destroy(characters);
        }
    }
    Coverage(const Coverage&) = delete;
    Coverage& operator=(const Coverage&) = delete;

    bool Has(const std::vector<FontFile>& files, size_t place,
             const std::vector<uint32_t>& codepoints) {
        const std::lock_guard lock(mutex);
        hb_set_t*& characters = charactersOf[place];
        if (!characters) {
            characters = ReadCharacters(files[place]);
        }
        return std::all_of(codepoints.begin(), codepoints.end(),
                           [&](uint32_t codepoint) { return HasCharacter(characters, codepoint); });
    }

private:
    std::mutex mutex;
    std::vector<hb_set_t*> charactersOf;  ///< null until read; as places in `files`
};

FontCatalogue::FontCatalogue(const std::vector<std::string>& folders) {
    std::vector<std::string> paths;
    for (const std::string& folder : folders) {
        const std::vector<std::string> found = FontPaths(folder);
        paths.insert(paths.end(), found.begin(), found.end());
    }
    std::sort(paths.begin(), paths.end());
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) == 0) {
        for (const std::string& path : paths) {
            AddFaces(library, path, files);
        }
        FT_Done_FreeType(library);
    }
    byFallbackDistance = {ByFallbackDistance(files, false), ByFallbackDistance(files, true)};
    coverage = std::make_unique<Coverage>(files.size());
}

FontCatalogue::~FontCatalogue() = default;

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

std::shared_ptr<Font> FontCatalogue::FindCovering(const std::vector<uint32_t>& codepoints,
                                                  bool bold) const {
    for (const size_t place : byFallbackDistance[bold ? 1 : 0]) {
        if (!coverage->Has(files, place, codepoints)) {
            continue;
        }
        std::shared_ptr<Font> font = Font::Open(files[place].path, files[place].faceIndex);
        if (font && std::all_of(codepoints.begin(), codepoints.end(),
                                [&](uint32_t codepoint) { return font->Covers(codepoint); })) {
            return font;
        }
    }
    return nullptr;
}

}  // namespace kelmo::host
