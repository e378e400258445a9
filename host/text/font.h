// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/text/outline.h"

struct FT_FaceRec_;
struct FT_LibraryRec_;
struct hb_font_t;

namespace kelmo::host {

/// One face of a font file: its outlines and what is needed to set text in it. All measures are in
/// font units, y up, until a scale is given. One thread at a time; different fonts are independent.
class Font {
public:
    /// Null when the file cannot be read or is no font.
    static std::shared_ptr<Font> Open(const std::string& file, int32_t faceIndex);
    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    /// False for fonts of pictures alone (some emoji fonts), which have nothing for us.
    bool HasOutlines() const;
    bool Covers(uint32_t codepoint) const;
    /// Pixels per font unit at a size of `pixels` per em.
    double Scale(double pixels) const { return pixels / unitsPerEm; }

    double Ascent() const;   ///< above the baseline
    double Descent() const;  ///< below the baseline, positive
    double LineGap() const;
    double UnderlinePosition() const;  ///< middle of the line, below the baseline, positive
    double UnderlineThickness() const;

    /// The font for shaping. Stays this object's.
    hb_font_t* Shaper() const { return shaper; }

    /// Appends the outline of a glyph with its origin at (x, y), times `scale`. Filled areas run
    /// clockwise on the page in fonts of every make, sub-contours end where they began. False when
    /// the glyph has no outline but a picture, or cannot be read; nothing is appended then.
    bool AppendGlyph(uint32_t glyph, double scale, double x, double y, Outline& outline) const;

private:
    Font() = default;

    FT_LibraryRec_* library = nullptr;
    FT_FaceRec_* face = nullptr;
    hb_font_t* shaper = nullptr;
    double unitsPerEm = 1000;
};

}  // namespace kelmo::host
