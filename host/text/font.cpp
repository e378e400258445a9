// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/font.h"

#include <ft2build.h>
#include <hb-ot.h>
#include <hb.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include "contract/text_path.h"

namespace kelmo::host {

namespace {

/// Receives an outline in font units and writes it in pixels, y down.
class OutlineWriter {
public:
    OutlineWriter(Outline& outline, double factor, double originX, double originY)
        : target(outline), scale(factor), x(originX), y(originY) {}

    bool Read(FT_Outline& source) {
        FT_Outline_Funcs steps{};
        steps.move_to = [](const FT_Vector* to, void* self) {
            static_cast<OutlineWriter*>(self)->MoveTo(*to);
            return 0;
        };
        steps.line_to = [](const FT_Vector* to, void* self) {
            static_cast<OutlineWriter*>(self)->LineTo(*to);
            return 0;
        };
        steps.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* self) {
            static_cast<OutlineWriter*>(self)->QuadraticTo(*control, *to);
            return 0;
        };
        steps.cubic_to = [](const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to,
                            void* self) {
            static_cast<OutlineWriter*>(self)->CubicTo(*c1, *c2, *to);
            return 0;
        };
        return FT_Outline_Decompose(&source, &steps, this) == 0;
    }

private:
    void Put(uint8_t type, const FT_Vector& p) {
        target.Add(type, x + p.x * scale, y - p.y * scale);
        current = p;
    }
    void MoveTo(const FT_Vector& to) { Put(kTextMoveTo, to); }
    void LineTo(const FT_Vector& to) {
        // A closing line where the outline is closed already would be a step without length.
        if (to.x != current.x || to.y != current.y) {
            Put(kTextLineTo, to);
        }
    }
    void QuadraticTo(const FT_Vector& control, const FT_Vector& to) {
        Put(kTextQuadraticTo, control);
        Put(kTextQuadraticTo, to);
    }
    void CubicTo(const FT_Vector& c1, const FT_Vector& c2, const FT_Vector& to) {
        Put(kTextCubicTo, c1);
        Put(kTextCubicTo, c2);
        Put(kTextCubicTo, to);
    }

    Outline& target;
    double scale;
    double x;
    double y;
    FT_Vector current{};
};

hb_font_extents_t Extents(hb_font_t* font) {
    hb_font_extents_t extents{};
    hb_font_get_h_extents(font, &extents);
    return extents;
}

}  // namespace

std::shared_ptr<Font> Font::Open(const std::string& file, int32_t faceIndex) {
    std::shared_ptr<Font> font(new Font);
    if (FT_Init_FreeType(&font->library) != 0 ||
        FT_New_Face(font->library, file.c_str(), faceIndex, &font->face) != 0) {
        return nullptr;
    }
    hb_blob_t* blob = hb_blob_create_from_file_or_fail(file.c_str());
    if (!blob) {
        return nullptr;
    }
    hb_face_t* hbFace = hb_face_create(blob, static_cast<unsigned>(faceIndex));
    font->shaper = hb_font_create(hbFace);
    font->unitsPerEm = hb_face_get_upem(hbFace);
    hb_face_destroy(hbFace);
    hb_blob_destroy(blob);
    return font;
}

Font::~Font() {
    hb_font_destroy(shaper);
    if (face) {
        FT_Done_Face(face);
    }
    if (library) {
        FT_Done_FreeType(library);
    }
}

bool Font::HasOutlines() const {
    return FT_IS_SCALABLE(face);
}

bool Font::Covers(uint32_t codepoint) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(shaper, codepoint, &glyph) && glyph != 0;
}

double Font::Ascent() const {
    return Extents(shaper).ascender;
}
double Font::Descent() const {
    return -Extents(shaper).descender;
}
double Font::LineGap() const {
    return Extents(shaper).line_gap;
}

double Font::UnderlinePosition() const {
    return face->underline_position != 0 ? -face->underline_position : unitsPerEm * 0.1;
}

double Font::UnderlineThickness() const {
    return face->underline_thickness > 0 ? face->underline_thickness : unitsPerEm * 0.05;
}

bool Font::AppendGlyph(uint32_t glyph, double scale, double x, double y, Outline& outline) const {
    if (!HasOutlines() || FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
        return false;
    }
    FT_Outline& source = face->glyph->outline;
    const size_t first = outline.Size();
    if (!OutlineWriter(outline, scale, x, y).Read(source)) {
        outline.Truncate(first);  // half a glyph is none
        return false;
    }
    // FreeType could turn the outline as well, but a curve that closes a contour would then leave
    // it to start with a control point.
    if (FT_Outline_Get_Orientation(&source) == FT_ORIENTATION_POSTSCRIPT) {
        outline.Reverse(first);
    }
    return true;
}

}  // namespace kelmo::host
