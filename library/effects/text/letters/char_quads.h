// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <opencv2/core.hpp>
#include <vector>

#include "effects/text/letters/char_outlines.h"
#include "framework/shared/quad_corners.h"

namespace kelmo {

/// The tightest rectangle round a character, which may stand askew.
struct CharQuad {
    /// As parts of the frame, y up: bottom left, top left, top right, bottom right of the rectangle
    /// before it was turned.
    std::array<cv::Point2f, 4> corners;
    /// In device space.
    cv::Point2f center;
    /// Degrees, y down.
    float angle = 0.0F;

    cv::Point2f DeviceCorner(std::size_t k) const {
        return {2.0F * corners[k].x - 1.0F, 2.0F * corners[k].y - 1.0F};
    }
};

/// Corners of the two triangles of a quad.
inline constexpr std::array<std::size_t, kQuadVertices> kCharCorners{2, 3, 0, 2, 0, 1};

/// One quad for each character of outlines in parts of the frame, two pixels larger than its
/// rectangle on all sides (room for smooth edges). `placement` moves pixels of the outlines to
/// those of the frame.
std::vector<CharQuad> BuildCharQuads(const CharOutlines& outlines, const cv::Size& frame,
                                     const cv::Matx23d& placement);
/// The tightest rectangle round some points in parts of the frame, in pixels, y down; an empty one
/// without points.
cv::RotatedRect TightRectangle(const std::vector<CharOutlines::Polylines>& chars,
                               const cv::Size& frame);

/// The corners of an upright rectangle: of what stands at `degrees` (counter-clockwise), in a space
/// with y up whose unit in x is `aspect` units in y.
struct UprightCorners {
    cv::Point2f bottomLeft, topLeft, topRight, bottomRight;
};
UprightCorners OrderCorners(const std::array<cv::Point2f, 4>& corners, const cv::Point2f& center,
                            float degrees, float aspect);

/// Fills an attribute with `value(quad, index, corner)`, an array of N floats, for each vertex.
/// Never shorter than one quad, so that a quad of the whole frame may be drawn with it.
template <std::size_t N, typename Value>
void FillCharVertices(const std::vector<CharQuad>& quads, std::vector<float>& out, Value value) {
    out.clear();
    out.reserve((quads.size() + 1) * kQuadVertices * N);
    for (std::size_t index = 0; index < quads.size(); ++index) {
        for (const std::size_t corner : kCharCorners) {
            const std::array<float, N> floats = value(quads[index], index, corner);
            out.insert(out.end(), floats.begin(), floats.end());
        }
    }
    if (quads.empty()) out.resize(kQuadVertices * N, 0.0F);
}

/// The two attributes that all of them have: "position" (3, device space) and "texcoord" (2).
void FillCharPlaces(const std::vector<CharQuad>& quads, std::vector<float>& positions,
                    std::vector<float>& texcoords);

}  // namespace kelmo
