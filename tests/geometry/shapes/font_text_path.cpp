// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/shapes/font_text_path.h"

#include <ft2build.h>

#include <algorithm>
#include <stdexcept>

#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace kelmo::test {
namespace {

constexpr float kFixed = 64;  // FreeType counts in 64ths of a pixel

// Turns FreeType's walk over an outline into the arrays of a text path.
struct Walk {
    GlyphOutline* out;
    float x;
    float y;
    FT_Vector start{};
    FT_Vector last{};
    bool isOpen = false;

    void Put(uint8_t type, const FT_Vector& point) {
        out->types.push_back(type);
        out->xs.push_back(x + static_cast<float>(point.x) / kFixed);
        out->ys.push_back(y - static_cast<float>(point.y) / kFixed);
        last = point;
    }
    void Close() {
        if (isOpen && (last.x != start.x || last.y != start.y)) Put(kTextLineTo, start);
    }
};

int MoveTo(const FT_Vector* to, void* user) {
    auto& walk = *static_cast<Walk*>(user);
    walk.Close();
    walk.start = *to;
    walk.isOpen = true;
    walk.Put(kTextMoveTo, *to);
    return 0;
}

int LineTo(const FT_Vector* to, void* user) {
    static_cast<Walk*>(user)->Put(kTextLineTo, *to);
    return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    static_cast<Walk*>(user)->Put(kTextQuadraticTo, *control);
    static_cast<Walk*>(user)->Put(kTextQuadraticTo, *to);
    return 0;
}

int CubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user) {
    static_cast<Walk*>(user)->Put(kTextCubicTo, *first);
    static_cast<Walk*>(user)->Put(kTextCubicTo, *second);
    static_cast<Walk*>(user)->Put(kTextCubicTo, *to);
    return 0;
}

// Runs through each sub-contour the other way round. Not FT_Outline_Reverse: that may leave a
// control point as the first one, which FT_Outline_Decompose refuses.
void Reverse(GlyphOutline& outline) {
    for (size_t begin = 0; begin < outline.types.size();) {
        size_t end = begin + 1;
        while (end < outline.types.size() && outline.types[end] != kTextMoveTo) ++end;
        // The points stand mirrored; so do the types behind the first move, segment by segment.
        std::reverse(outline.xs.begin() + begin, outline.xs.begin() + end);
        std::reverse(outline.ys.begin() + begin, outline.ys.begin() + end);
        std::reverse(outline.types.begin() + begin + 1, outline.types.begin() + end);
        begin = end;
    }
}

}  // namespace

struct FontFile::Handles {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    ~Handles() {
        if (face) FT_Done_Face(face);
        if (library) FT_Done_FreeType(library);
    }
};

FontFile::FontFile(const std::string& path) : handles(std::make_unique<Handles>()) {
    if (FT_Init_FreeType(&handles->library) != 0 ||
        FT_New_Face(handles->library, path.c_str(), 0, &handles->face) != 0) {
        throw std::runtime_error("cannot open the font " + path);
    }
}

FontFile::~FontFile() = default;

uint32_t FontFile::GlyphCount() const {
    return static_cast<uint32_t>(handles->face->num_glyphs);
}

uint32_t FontFile::GlyphOf(char32_t character) const {
    return FT_Get_Char_Index(handles->face, character);
}

GlyphOutline FontFile::Outline(uint32_t glyph, float size, float x, float y, float* advance) const {
    GlyphOutline outline;
    FT_Set_Char_Size(handles->face, 0, static_cast<FT_F26Dot6>(size * kFixed), 72, 72);
    if (FT_Load_Glyph(handles->face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0) {
        return outline;
    }
    FT_Outline& source = handles->face->glyph->outline;
    const FT_Outline_Funcs functions{MoveTo, LineTo, ConicTo, CubicTo, 0, 0};
    Walk walk{&outline, x, y};
    FT_Outline_Decompose(&source, &functions, &walk);
    walk.Close();
    if (FT_Outline_Get_Orientation(&source) == FT_ORIENTATION_POSTSCRIPT) Reverse(outline);
    if (advance) *advance = static_cast<float>(handles->face->glyph->advance.x) / kFixed;
    return outline;
}

void FontTextPath::AddLines(const FontFile& font, const std::vector<uint32_t>& glyphs, float size) {
    float x = 0;
    float y = size;
    for (uint32_t glyph : glyphs) {
        float advance = 0;
        GlyphOutline outline = font.Outline(glyph, size, x, y, &advance);
        if (x + advance > static_cast<float>(width)) {
            x = 0;
            y += size * 1.2f;
            outline = font.Outline(glyph, size, x, y, &advance);
        }
        x += advance;
        Add(std::move(outline));
    }
}

int32_t FontTextPath::GetPath(int32_t index, const uint8_t** types, const float** xs,
                              const float** ys, int32_t) {
    const GlyphOutline& outline = outlines[index];
    *types = outline.types.data();
    *xs = outline.xs.data();
    *ys = outline.ys.data();
    return static_cast<int32_t>(outline.types.size());
}

void FontTextPath::Clone(std::shared_ptr<TextPath>* out) {
    *out = std::make_shared<FontTextPath>(*this);
}

}  // namespace kelmo::test
