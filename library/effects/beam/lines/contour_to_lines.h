// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

#include "effects/beam/lines/curve_line.h"

namespace kelmo {

/// A place of a picture, in pixels, in device space.
cv::Point2f ToDeviceSpace(const cv::Point2f& pixel, const cv::Size& size);

/// Turns contours into chains of lines, smooth curves or straight ones. Keeps its memory between
/// contours.
class ContourToLines {
public:
    /// `contour` in pixels of a picture of `size`. Segments shorter than `minSegment` (sixths of a
    /// device unit) are left out. Progress runs from 0 to 1 along the contour. Fewer than 3 points
    /// give nothing.
    void Convert(const std::vector<cv::Point>& contour, const cv::Size& size, float minSegment,
                 bool closed, bool smooth, const CurveLineSink& sink);

private:
    struct Segment {
        cv::Point2f start, end;
    };
    std::vector<Segment> segments;
};

}  // namespace kelmo
