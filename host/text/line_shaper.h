// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/text/font.h"
#include "host/text/font_catalogue.h"
#include "host/text/text_settings.h"

namespace kelmo::host {

/// A character with everything that moves together with it (accents, parts of a ligature).
struct ShapedCharacter {
    uint32_t index = 0;  ///< of its first code point in the line
    Outline outline;     ///< pixels from the start of the line's baseline, y down; may be empty
};

/// One line, set from left to right.
struct ShapedLine {
    std::vector<ShapedCharacter> characters;  ///< in reading order
    double width = 0;                         ///< pixels
    double ascent = 0;                        ///< above the baseline
    double descent = 0;                       ///< below the baseline
    double gap = 0;                           ///< between lines
};

/// Sets lines of text: directions (Unicode Bidirectional Algorithm), scripts, fonts by coverage,
/// shaping. Keeps the fonts that it has found. One thread at a time.
class LineShaper {
public:
    /// Throws HostError when the font file cannot be read or the machine has no font at all.
    /// `settings` and `catalogue` are borrowed and must outlive the object.
    LineShaper(const TextSettings& settings, const FontCatalogue& catalogue);
    ~LineShaper();

    ShapedLine Shape(const std::vector<uint32_t>& codepoints);

    /// The first font: it decides about heights and decoration.
    const Font& MainFont() const { return *fonts.front(); }
    /// Characters that no font has an outline for; they are left out of the lines.
    const std::set<uint32_t>& Missing() const { return missing; }

private:
    struct Run;
    class LineBuilder;

    /// An index into `fonts`, or -1: the first font that shows all of these characters together.
    int32_t FontFor(const std::vector<uint32_t>& codepoints);
    /// The same for a character and the marks that follow it. Marks that only other fonts have go
    /// without a glyph when no font has both; a character that no font has is noted as missing.
    int32_t FontForCluster(const std::vector<uint32_t>& cluster);
    std::vector<int32_t> FontsOf(const std::vector<uint32_t>& codepoints);
    std::vector<Run> Itemise(const std::vector<uint32_t>& codepoints);

    const TextSettings& settings;
    const FontCatalogue& catalogue;
    std::vector<std::shared_ptr<Font>> fonts;
    std::map<std::vector<uint32_t>, int32_t> fontOfCharacters;
    std::set<uint32_t> missing;
};

}  // namespace kelmo::host
