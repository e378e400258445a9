// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/line_shaper.h"

#include <fribidi.h>
#include <hb.h>

#include <algorithm>
#include <iterator>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

hb_unicode_funcs_t* Unicode() {
    return hb_unicode_funcs_get_default();
}

bool IsUnspecific(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED ||
           script == HB_SCRIPT_UNKNOWN;
}

/// Joiners and control characters need no glyph.
bool ShowsNothing(uint32_t codepoint) {
    const hb_unicode_general_category_t category =
        hb_unicode_general_category(Unicode(), codepoint);
    const auto isWithin = [codepoint](uint32_t first, uint32_t last) {
        return first <= codepoint && codepoint <= last;
    };
    return category == HB_UNICODE_GENERAL_CATEGORY_CONTROL ||
           category == HB_UNICODE_GENERAL_CATEGORY_FORMAT ||
           // Marks that are none: a joiner, silent vowels, selectors of variants.
           codepoint == 0x034F || isWithin(0x17B4, 0x17B5) || isWithin(0x180B, 0x180F) ||
           isWithin(0xFE00, 0xFE0F) || isWithin(0xE0100, 0xE01EF);
}

/// Marks and joiners stay in the font of what they follow, where it has them.
bool FollowsItsBase(uint32_t codepoint) {
    switch (hb_unicode_general_category(Unicode(), codepoint)) {
        case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
        case HB_UNICODE_GENERAL_CATEGORY_FORMAT:
        case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
        case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
        case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
            return true;
        default:
            return false;
    }
}

/// Whether a character with its marks comes out whole: a font may lack a mark and have what it
/// makes of the letter.
bool ShowsTogether(const Font& font, const std::vector<uint32_t>& codepoints) {
    uint32_t letter = codepoints.front();
    for (size_t i = 1; i < codepoints.size(); ++i) {
        hb_codepoint_t composed = 0;
        if (hb_unicode_compose(Unicode(), letter, codepoints[i], &composed) &&
            font.Covers(composed)) {
            letter = composed;
        } else if (!font.Covers(codepoints[i])) {
            return false;
        }
    }
    return font.Covers(letter);
}

/// Scripts whose letters hang together: space between them would tear words apart.
bool IsJoined(hb_script_t script) {
    return script == HB_SCRIPT_ARABIC || script == HB_SCRIPT_SYRIAC ||
           script == HB_SCRIPT_MONGOLIAN || script == HB_SCRIPT_NKO ||
           script == HB_SCRIPT_MANDAIC || script == HB_SCRIPT_DEVANAGARI ||
           script == HB_SCRIPT_BENGALI || script == HB_SCRIPT_GURMUKHI;
}

/// Punctuation and digits take the script of the text before them, at the start of that behind.
std::vector<hb_script_t> ScriptsOf(const std::vector<uint32_t>& codepoints) {
    std::vector<hb_script_t> scripts;
    for (const uint32_t codepoint : codepoints) {
        scripts.push_back(hb_unicode_script(Unicode(), codepoint));
    }
    const auto first = std::find_if_not(scripts.begin(), scripts.end(), IsUnspecific);
    hb_script_t current = first == scripts.end() ? HB_SCRIPT_LATIN : *first;
    for (hb_script_t& script : scripts) {
        if (IsUnspecific(script)) {
            script = current;
        }
        current = script;
    }
    return scripts;
}

std::vector<FriBidiLevel> LevelsOf(const std::vector<uint32_t>& codepoints) {
    const auto count = static_cast<FriBidiStrIndex>(codepoints.size());
    std::vector<FriBidiCharType> types(count);
    std::vector<FriBidiBracketType> brackets(count);
    std::vector<FriBidiLevel> levels(count);
    fribidi_get_bidi_types(codepoints.data(), count, types.data());
    fribidi_get_bracket_types(codepoints.data(), count, types.data(), brackets.data());
    FriBidiParType direction = FRIBIDI_PAR_ON;
    if (!fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &direction,
                                             levels.data())) {
        std::fill(levels.begin(), levels.end(), FriBidiLevel(0));
    }
    return levels;
}

}  // namespace

/// A stretch of a line in one direction, script and font.
struct LineShaper::Run {
    size_t start = 0;
    size_t end = 0;
    FriBidiLevel level = 0;
    hb_script_t script = HB_SCRIPT_LATIN;
    int32_t font = -1;
};

/// Sets runs one behind the other and collects their glyphs by character.
class LineShaper::LineBuilder {
public:
    LineBuilder(const LineShaper& parent, const std::vector<uint32_t>& codepoints)
        : shaper(parent), text(codepoints), buffer(hb_buffer_create()) {}
    ~LineBuilder() { hb_buffer_destroy(buffer); }

    void Add(const Run& run) {
        const Font& font = *shaper.fonts[run.font];
        const double scale = font.Scale(shaper.settings.size);
        const double spacing = IsJoined(run.script) ? 0 : shaper.settings.letterSpacing;
        ShapeRun(run, font, spacing != 0);
        unsigned count = 0;
        const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, nullptr);
        for (unsigned i = 0; i < count; ++i) {
            const bool isNew = i == 0 || infos[i].cluster != infos[i - 1].cluster;
            if (isNew && !characters.empty()) {
                pen += spacing;
            }
            Outline& outline = characters[infos[i].cluster];
            // Glyph 0 is the font's box for "I do not have this".
            if (infos[i].codepoint == 0 ||
                !font.AppendGlyph(infos[i].codepoint, scale, pen + positions[i].x_offset * scale,
                                  -positions[i].y_offset * scale, outline)) {
                lost.insert(text[infos[i].cluster]);
            }
            pen += positions[i].x_advance * scale;
        }
        line.ascent = std::max(line.ascent, font.Ascent() * scale);
        line.descent = std::max(line.descent, font.Descent() * scale);
        line.gap = std::max(line.gap, font.LineGap() * scale);
    }

    ShapedLine Finish() {
        for (auto& [index, outline] : characters) {
            line.characters.push_back({index, std::move(outline)});
        }
        line.width = pen;
        return std::move(line);
    }

    const std::set<uint32_t>& Lost() const { return lost; }

private:
    void ShapeRun(const Run& run, const Font& font, bool isSpaced) {
        hb_buffer_clear_contents(buffer);
        hb_buffer_add_utf32(buffer, text.data(), static_cast<int>(text.size()),
                            static_cast<unsigned>(run.start),
                            static_cast<int>(run.end - run.start));
        hb_buffer_set_direction(buffer, run.level % 2 ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer, run.script);
        hb_buffer_set_language(buffer, hb_language_get_default());
        // Ligatures would stay narrow among spaced letters.
        const hb_feature_t plain[] = {{HB_TAG('l', 'i', 'g', 'a'), 0, 0, HB_FEATURE_GLOBAL_END},
                                      {HB_TAG('c', 'l', 'i', 'g'), 0, 0, HB_FEATURE_GLOBAL_END}};
        hb_shape(font.Shaper(), buffer, plain, isSpaced ? 2 : 0);
    }

    const LineShaper& shaper;
    const std::vector<uint32_t>& text;
    hb_buffer_t* buffer;
    ShapedLine line;
    std::map<uint32_t, Outline> characters;
    std::set<uint32_t> lost;
    double pen = 0;
};

LineShaper::LineShaper(const TextSettings& textSettings, const FontCatalogue& fontCatalogue)
    : settings(textSettings), catalogue(fontCatalogue) {
    if (!settings.fontFile.empty()) {
        fonts.push_back(Font::Open(settings.fontFile, settings.faceIndex));
        if (!fonts.back() || !fonts.back()->HasOutlines()) {
            throw HostError("cannot set text in '" + settings.fontFile +
                            "': no outline font could be read from it");
        }
    }
    for (const std::string& family : settings.families) {
        const FontFile* file = catalogue.Find(family, settings.bold, settings.italic);
        if (std::shared_ptr<Font> font = file ? Font::Open(file->path, file->faceIndex) : nullptr) {
            fonts.push_back(std::move(font));
        }
    }
    if (fonts.empty()) {
        if (std::shared_ptr<Font> any = catalogue.FindCovering({'A'}, settings.bold)) {
            fonts.push_back(std::move(any));
        } else {
            throw HostError("cannot set text: no outline font was found; give a font file");
        }
    }
}

LineShaper::~LineShaper() = default;

int32_t LineShaper::FontFor(const std::vector<uint32_t>& codepoints) {
    const auto known = fontOfCharacters.find(codepoints);
    if (known != fontOfCharacters.end()) {
        return known->second;
    }
    auto found = std::find_if(fonts.begin(), fonts.end(),
                              [&](const auto& font) { return ShowsTogether(*font, codepoints); });
    if (found == fonts.end()) {
        if (std::shared_ptr<Font> font = catalogue.FindCovering(codepoints, settings.bold)) {
            fonts.push_back(std::move(font));
            found = fonts.end() - 1;
        }
    }
    const int32_t index = found == fonts.end() ? -1 : static_cast<int32_t>(found - fonts.begin());
    fontOfCharacters[codepoints] = index;
    return index;
}

int32_t LineShaper::FontForCluster(const std::vector<uint32_t>& cluster) {
    std::vector<uint32_t> shown;
    std::copy_if(cluster.begin(), cluster.end(), std::back_inserter(shown),
                 [](uint32_t codepoint) { return !ShowsNothing(codepoint); });
    if (shown.empty()) {
        return 0;
    }
    const int32_t ofBase = FontFor({shown.front()});
    if (ofBase < 0) {
        missing.insert(shown.front());
        return -1;
    }
    if (ShowsTogether(*fonts[ofBase], shown)) {
        return ofBase;
    }
    const int32_t ofAll = FontFor(shown);
    return ofAll < 0 ? ofBase : ofAll;
}

std::vector<int32_t> LineShaper::FontsOf(const std::vector<uint32_t>& codepoints) {
    std::vector<int32_t> result;
    for (auto base = codepoints.begin(); base != codepoints.end();) {
        const auto end = std::find_if_not(base + 1, codepoints.end(), FollowsItsBase);
        result.insert(result.end(), end - base, FontForCluster({base, end}));
        base = end;
    }
    return result;
}

std::vector<LineShaper::Run> LineShaper::Itemise(const std::vector<uint32_t>& codepoints) {
    const std::vector<FriBidiLevel> levels = LevelsOf(codepoints);
    const std::vector<hb_script_t> scripts = ScriptsOf(codepoints);
    const std::vector<int32_t> fontIndices = FontsOf(codepoints);
    std::vector<Run> runs;
    for (size_t i = 0; i < codepoints.size(); ++i) {
        if (runs.empty() || runs.back().level != levels[i] || runs.back().script != scripts[i] ||
            runs.back().font != fontIndices[i]) {
            runs.push_back({i, i, levels[i], scripts[i], fontIndices[i]});
        }
        runs.back().end = i + 1;
    }
    // From the highest level down to the lowest odd one, stretches of at least that level turn.
    FriBidiLevel highest = 0;
    for (const Run& run : runs) {
        highest = std::max(highest, run.level);
    }
    for (FriBidiLevel level = highest; level > 0; --level) {
        const auto isInner = [level](const Run& run) { return run.level >= level; };
        for (auto at = runs.begin(); at != runs.end();) {
            at = std::find_if(at, runs.end(), isInner);
            const auto stop = std::find_if_not(at, runs.end(), isInner);
            std::reverse(at, stop);
            at = stop;
        }
    }
    return runs;
}

ShapedLine LineShaper::Shape(const std::vector<uint32_t>& codepoints) {
    const std::vector<Run> runs = Itemise(codepoints);
    LineBuilder builder(*this, codepoints);
    for (const Run& run : runs) {
        if (run.font >= 0) {
            builder.Add(run);
        }
    }
    missing.insert(builder.Lost().begin(), builder.Lost().end());
    ShapedLine line = builder.Finish();
    const double scale = MainFont().Scale(settings.size);
    line.ascent = std::max(line.ascent, MainFont().Ascent() * scale);
    line.descent = std::max(line.descent, MainFont().Descent() * scale);
    line.gap = std::max(line.gap, MainFont().LineGap() * scale);
    return line;
}

}  // namespace kelmo::host
