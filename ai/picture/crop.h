// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <opencv2/core.hpp>

namespace kelmo {

/// Positions are in pixels of the frame, x right, y down; the centre of the first pixel is (0.5,
/// 0.5).

/// A square of a frame, turned: `angle` in radians, clockwise on the screen.
struct RotatedSquare {
    cv::Point2f centre;
    float side = 0.0f;
    float angle = 0.0f;

    bool IsUsable() const {
        return std::isfinite(centre.x) && std::isfinite(centre.y) && std::isfinite(angle) &&
               side >= 4.0f && side < 1e5f;
    }
};

/// Takes positions of a square picture of `size` pixels, cut from `square`, back to the frame.
class CropMapping {
public:
    CropMapping(const RotatedSquare& square, int size)
        : centre(square.centre),
          scale(square.side / static_cast<float>(size)),
          half(static_cast<float>(size) / 2),
          c(std::cos(square.angle) * scale),
          s(std::sin(square.angle) * scale) {}

    cv::Point2f ToFrame(float x, float y) const {
        x -= half, y -= half;
        return {centre.x + c * x - s * y, centre.y + s * x + c * y};
    }
    /// Frame pixels for a pixel of the square picture.
    float Scale() const { return scale; }

private:
    cv::Point2f centre;
    float scale, half, c, s;
};

}  // namespace kelmo
