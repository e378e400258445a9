// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contract/text_path.h"

namespace kelmo::test {

/// The outline of one glyph in the form of `TextPath::GetPath`: pixels, y down.
struct GlyphOutline {
    std::vector<uint8_t> types;
    std::vector<float> xs;
    std::vector<float> ys;
};

/// Glyphs of a font file, outer contours clockwise on screen whatever the font's format.
class FontFile {
public:
    /// Throws std::runtime_error when the file cannot be opened.
    explicit FontFile(const std::string& path);
    ~FontFile();
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;

    uint32_t GlyphCount() const;
    uint32_t GlyphOf(char32_t character) const;
    /// The glyph at `size` pixels with its origin at (x, y); `advance` receives pixels.
    GlyphOutline Outline(uint32_t glyph, float size, float x, float y, float* advance) const;

private:
    struct Handles;
    std::unique_ptr<Handles> handles;
};

/// Laid-out text without a host: one path per glyph, canvas and anchor in the middle of the frame.
class FontTextPath : public TextPath {
public:
    FontTextPath(int32_t frameWidth, int32_t frameHeight)
        : width(frameWidth), height(frameHeight) {}

    void Add(GlyphOutline outline) { outlines.push_back(std::move(outline)); }
    /// Glyphs from left to right and in lines from the top, as many in a line as fit; from (x, y).
    void AddLines(const FontFile& font, const std::vector<uint32_t>& glyphs, float size);

    int32_t GetPathCount() override { return static_cast<int32_t>(outlines.size()); }
    int32_t GetPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                    int32_t reserved) override;
    void GetAnchor(float* p, float* q) override { *p = *q = 0.5f; }
    void GetSize(int32_t* w, int32_t* h) override { *w = width, *h = height; }
    float GetAngle() override { return 0; }
    bool HasDecoration() override { return false; }
    bool GetBox(float*, uint32_t*) override { return false; }
    void Clone(std::shared_ptr<TextPath>* out) override;
    bool IsSame(TextPath* other) override { return other == this; }
    int32_t GetLayoutPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                          int32_t reserved) override {
        return GetPath(index, types, xs, ys, reserved);
    }
    void GetOrigin(float* x, float* y) override { *x = *y = 0; }
    int32_t GetRectCount() override { return 0; }
    uint32_t GetRectColor() override { return 0; }
    void GetRect(int32_t, float*) override {}

private:
    int32_t width;
    int32_t height;
    std::vector<GlyphOutline> outlines;
};

/// The fonts that the tests use; Debian's fonts-dejavu-core and fonts-noto-cjk.
inline constexpr char kLatinFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
inline constexpr char kHanFont[] = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc";

}  // namespace kelmo::test
