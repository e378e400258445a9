// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/text/host_text_path.h"

#include <hb.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "host/session/host_error.h"
#include "host/text/line_shaper.h"

namespace kelmo::host {

namespace {

constexpr float kMaxTextSize = 16384;
constexpr double kMaxCanvas = 1 << 20;

/// Code points of a UTF-8 text; broken bytes become U+FFFD.
std::vector<uint32_t> Decode(const std::string& text) {
    hb_buffer_t* buffer = hb_buffer_create();
    hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, -1);
    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
    std::vector<uint32_t> codepoints;
    for (unsigned i = 0; i < count; ++i) {
        codepoints.push_back(infos[i].codepoint);
    }
    hb_buffer_destroy(buffer);
    return codepoints;
}

/// Line feeds, carriage returns with or without one, and the two separators of Unicode end lines.
std::vector<std::vector<uint32_t>> SplitLines(const std::vector<uint32_t>& codepoints) {
    std::vector<std::vector<uint32_t>> lines(1);
    for (size_t i = 0; i < codepoints.size(); ++i) {
        const uint32_t c = codepoints[i];
        if (c == '\n' || c == '\r' || c == 0x2028 || c == 0x2029) {
            lines.emplace_back();
            i += c == '\r' && i + 1 < codepoints.size() && codepoints[i + 1] == '\n';
        } else if (c == '\t') {
            lines.back().insert(lines.back().end(), 4, ' ');
        } else if (c >= ' ' && c != 0x7F) {
            lines.back().push_back(c);
        }
    }
    return lines;
}

void CheckSettings(const TextSettings& settings) {
    if (!(settings.size > 0 && settings.size <= kMaxTextSize)) {
        throw UsageError("the text size must be above 0 and at most 16384 pixels");
    }
    const float others[] = {settings.letterSpacing, settings.lineSpacing, settings.positionX,
                            settings.positionY,     settings.anchorX,     settings.anchorY,
                            settings.angle,         settings.boxPadding};
    if (!std::all_of(std::begin(others), std::end(others),
                     [](float value) { return std::isfinite(value); })) {
        throw UsageError("the numbers of a text must be finite");
    }
    if (settings.lineSpacing < 0) {
        throw UsageError("the line spacing of a text cannot be negative");
    }
    if (settings.canvasWidth < 0 || settings.canvasHeight < 0) {
        throw UsageError("the canvas of a text cannot have a negative size");
    }
}

void WarnOfMissing(const std::set<uint32_t>& missing, const TextWarning& warn) {
    if (missing.empty() || !warn) {
        return;
    }
    constexpr size_t kNamed = 8;
    std::string sentence = "no font has an outline for ";
    size_t count = 0;
    for (const uint32_t codepoint : missing) {
        if (count++ == kNamed) {
            sentence += " and others";
            break;
        }
        char name[16];
        std::snprintf(name, sizeof(name), "%sU+%04X", count > 1 ? ", " : "", codepoint);
        sentence += name;
    }
    warn(sentence + "; left out");
}

int32_t GetOutline(const std::vector<Outline>& outlines, int32_t index, const uint8_t** types,
                   const float** xs, const float** ys) {
    if (index < 0 || static_cast<size_t>(index) >= outlines.size()) {
        return 0;
    }
    const Outline& outline = outlines[index];
    *types = outline.types.data();
    *xs = outline.xs.data();
    *ys = outline.ys.data();
    return static_cast<int32_t>(outline.Size());
}

}  // namespace

void HostTextPath::Box::CopyCorners(float* corners) const {
    const double values[8] = {left, top, right, top, right, bottom, left, bottom};
    std::copy(std::begin(values), std::end(values), corners);
}

/// Puts shaped lines one below the other and the whole on the canvas.
class HostTextPath::Layout {
public:
    Layout(const TextSettings& textSettings, const FontCatalogue& catalogue)
        : settings(textSettings), shaper(settings, catalogue) {}

    std::shared_ptr<Content> Build() {
        for (const std::vector<uint32_t>& codepoints : SplitLines(Decode(settings.text))) {
            lines.push_back(shaper.Shape(codepoints));
            width = std::max(width, lines.back().width);
        }
        StackLines();
        Place();
        return content;
    }

    const std::set<uint32_t>& Missing() const { return shaper.Missing(); }

private:
    void StackLines() {
        double top = 0;
        for (ShapedLine& line : lines) {
            const double slack = width - line.width;
            const double left = settings.alignment == TextAlignment::kLeft     ? 0
                                : settings.alignment == TextAlignment::kCenter ? slack / 2
                                                                               : slack;
            const double baseline = top + line.ascent;
            for (ShapedCharacter& character : line.characters) {
                character.outline.Move(left, baseline);
                content->layoutPaths.push_back(std::move(character.outline));
            }
            if (settings.underlineColor && line.width > 0) {
                AddUnderline(left, left + line.width, baseline);
            }
            height = std::max(height, baseline + line.descent);
            top += (line.ascent + line.descent + line.gap) * settings.lineSpacing;
        }
    }

    void AddUnderline(double left, double right, double baseline) {
        const Font& font = shaper.MainFont();
        const double scale = font.Scale(settings.size);
        const double middle = baseline + font.UnderlinePosition() * scale;
        const double half = font.UnderlineThickness() * scale / 2;
        content->rects.push_back({left, middle - half, right, middle + half});
    }

    void Place() {
        const double padding = settings.boxColor ? std::max(settings.boxPadding, 0.0f) : 0;
        const auto fit = [&](int32_t given, double needed) {
            return given > 0 ? given
                             : static_cast<int32_t>(
                                   std::min(std::ceil(needed + 2 * padding), kMaxCanvas));
        };
        content->width = fit(settings.canvasWidth, width);
        content->height = fit(settings.canvasHeight, height);
        content->anchorX = settings.anchorX;
        content->anchorY = settings.anchorY;
        content->angle = settings.angle;
        if (settings.boxColor || !content->rects.empty()) {
            content->boxColor = settings.boxColor.value_or(0);
        }
        content->rectColor = settings.underlineColor;

        const double dx = content->width * double(settings.positionX) - width / 2;
        const double dy = content->height * double(settings.positionY) - height / 2;
        content->paths = content->layoutPaths;
        for (Outline& path : content->paths) {
            path.Move(dx, dy);
        }
        content->box = {dx - padding, dy - padding, dx + width + padding, dy + height + padding};
        if (!settings.boxColor) {
            // Decoration is drawn where there is a box: lines alone come with one that shows
            // nothing.
            content->box.right = content->box.left;
            content->box.bottom = content->box.top;
        }
        for (Box& rect : content->rects) {
            rect = {rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
        }
    }

    const TextSettings& settings;
    LineShaper shaper;
    std::vector<ShapedLine> lines;
    std::shared_ptr<Content> content = std::make_shared<Content>();
    double width = 0;
    double height = 0;
};

std::shared_ptr<HostTextPath> HostTextPath::Create(const TextSettings& settings,
                                                   const TextWarning& warn,
                                                   const FontCatalogue& catalogue) {
    CheckSettings(settings);
    Layout layout(settings, catalogue);
    std::shared_ptr<HostTextPath> text(new HostTextPath(layout.Build()));
    WarnOfMissing(layout.Missing(), warn);
    return text;
}

int32_t HostTextPath::GetPathCount() {
    return static_cast<int32_t>(content->paths.size());
}

int32_t HostTextPath::GetPath(int32_t index, const uint8_t** types, const float** xs,
                              const float** ys, int32_t /*reserved*/) {
    return GetOutline(content->paths, index, types, xs, ys);
}

int32_t HostTextPath::GetLayoutPath(int32_t index, const uint8_t** types, const float** xs,
                                    const float** ys, int32_t /*reserved*/) {
    return GetOutline(content->layoutPaths, index, types, xs, ys);
}

void HostTextPath::GetAnchor(float* p, float* q) {
    *p = content->anchorX;
    *q = content->anchorY;
}

void HostTextPath::GetSize(int32_t* width, int32_t* height) {
    *width = content->width;
    *height = content->height;
}

float HostTextPath::GetAngle() {
    return content->angle;
}

bool HostTextPath::HasDecoration() {
    return content->boxColor.has_value();
}

bool HostTextPath::GetBox(float* corners, uint32_t* color) {
    if (!content->boxColor) {
        return false;
    }
    content->box.CopyCorners(corners);
    *color = *content->boxColor;
    return true;
}

void HostTextPath::Clone(std::shared_ptr<TextPath>* out) {
    out->reset(new HostTextPath(content));
}

bool HostTextPath::IsSame(TextPath* other) {
    const auto* text = dynamic_cast<HostTextPath*>(other);
    return text && (text->content == content || *text->content == *content);
}

void HostTextPath::GetOrigin(float* x, float* y) {
    *x = content->width * 0.5f;
    *y = content->height * 0.5f;
}

int32_t HostTextPath::GetRectCount() {
    return static_cast<int32_t>(content->rects.size());
}

uint32_t HostTextPath::GetRectColor() {
    return content->rectColor.value_or(0);
}

void HostTextPath::GetRect(int32_t index, float* corners) {
    if (index >= 0 && index < GetRectCount()) {
        content->rects[index].CopyCorners(corners);
    }
}

}  // namespace kelmo::host
