// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace kelmo {

/// A line across a picture, below which things are mirrored.
///
/// Worked out in pixels with y down; lines are given in texture space (0..1, y up) as both ends
/// (x, y, x, y).
class FloorLine {
public:
    /// Through the point (x, y), fractions of the frame with y down, at an angle in degrees,
    /// counter-clockwise. `y` is stretched with the shape of the frame up to 1.8777778, so that
    /// 0.5 stays near the middle of wide frames. `frame` has no side of 0.
    FloorLine(float x, float y, float degrees, const cv::Size& frame);

    /// The floor, and the parallel line at `distance` pixels below it (above, when negative).
    cv::Vec4f Line() const { return Parallel(0.0F); }
    cv::Vec4f Parallel(float distance) const;
    /// Pixels from the line to the farthest corner of the frame below it; 0 when all lies above.
    float Farthest() const { return farthest; }

private:
    cv::Size2f size;
    cv::Point2f start, end;
    cv::Point2f down;  ///< of length 1, away from what is mirrored
    float farthest = 0.0F;
};

}  // namespace kelmo
