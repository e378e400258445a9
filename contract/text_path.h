// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>

namespace kelmo {

/// Point types of `TextPath::GetPath`.
enum TextPointType : uint8_t {
    kTextMoveTo = 16,      ///< one point: begins a new closed sub-contour
    kTextLineTo = 20,      ///< one point: the end
    kTextCubicTo = 24,     ///< three points: control, control, end; each carries the type
    kTextQuadraticTo = 25  ///< two points: control, end; each carries the type
};

/// Laid-out text of the host: one path for each piece that moves on its own (a character).
///
/// Coordinates are pixels relative to the top left of the text's canvas, y down. Arrays stay the
/// object's and are valid until its next call.
class TextPath {
public:
    virtual ~TextPath() = default;
    virtual int32_t GetPathCount() = 0;
    /// Number of points; 0 for an empty path. One type per point; `reserved` is 0.
    virtual int32_t GetPath(int32_t index, const uint8_t** types, const float** xs,
                            const float** ys, int32_t reserved) = 0;
    /// Fractions of the frame: where the middle of the canvas stands.
    virtual void GetAnchor(float* p, float* q) = 0;
    /// Size of the canvas in pixels.
    virtual void GetSize(int32_t* width, int32_t* height) = 0;
    /// Degrees, counter-clockwise with y up.
    virtual float GetAngle() = 0;
    /// Whether box and rects below exist.
    virtual bool HasDecoration() = 0;
    /// 8 floats (4 corners x, y) and a packed colour; false when there is no box. Rects are drawn
    /// only with a box: one without area serves where there are lines alone.
    virtual bool GetBox(float* corners, uint32_t* color) = 0;
    /// A copy that outlives this object.
    virtual void Clone(std::shared_ptr<TextPath>* out) = 0;
    /// True when `other`, an earlier clone, holds the same text.
    virtual bool IsSame(TextPath* other) = 0;
    /// As `GetPath`: the outline before the host's final placement.
    virtual int32_t GetLayoutPath(int32_t index, const uint8_t** types, const float** xs,
                                  const float** ys, int32_t reserved) = 0;
    virtual void GetOrigin(float* x, float* y) = 0;
    /// At most 4096 are read.
    virtual int32_t GetRectCount() = 0;
    /// Packed colour of all rects.
    virtual uint32_t GetRectColor() = 0;
    /// 8 floats: 4 corners.
    virtual void GetRect(int32_t index, float* corners) = 0;
    /// 8 floats: the corners of the upright box round path `index`, from the top left, clockwise;
    /// all 0 for an empty path. A host that has drawn its text larger (an outline, a shadow) gives
    /// what it has drawn.
    virtual void GetPathCorners(int32_t index, float* corners);
    /// 16 floats, column-major: what the host has done to the path beyond its place; without a word
    /// from the host nothing.
    virtual void GetPathTransform(int32_t index, float* columns);
};

inline void TextPath::GetPathCorners(int32_t index, float* corners) {
    const uint8_t* types = nullptr;
    const float *xs = nullptr, *ys = nullptr;
    const int32_t count = GetPath(index, &types, &xs, &ys, 0);
    std::fill_n(corners, 8, 0.0F);
    if (count <= 0) return;
    const auto [left, right] = std::minmax_element(xs, xs + count);
    const auto [top, bottom] = std::minmax_element(ys, ys + count);
    const float box[8] = {*left, *top, *right, *top, *right, *bottom, *left, *bottom};
    std::copy_n(box, 8, corners);
}

inline void TextPath::GetPathTransform(int32_t, float* columns) {
    for (int i = 0; i < 16; ++i) columns[i] = i % 5 == 0 ? 1.0F : 0.0F;
}

}  // namespace kelmo
