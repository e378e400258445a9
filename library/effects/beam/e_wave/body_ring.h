// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core/types.hpp>
#include <span>
#include <vector>

#include "effects/beam/lines/curve_line.h"

namespace kelmo {

/// A level strip of a picture, in its pixels, both edges included.
struct Band {
    int32_t top = 0;
    int32_t height = 0;
};

/// The box of the ring that lies round a body in `band`: as wide as the body is there, and as high
/// as the band in proportion to the whole body's box. A band that misses the contour gives a
/// negative width.
cv::Rect RingInBand(const std::vector<cv::Point>& contour, const cv::Rect& box, const Band& band);

/// Four curves through the ring's back, right, front and left, each a share of progress 0..1 that
/// begins at the back. `open` leaves a gap at the back, where the body stands before it.
void RingLines(const cv::Rect& ring, bool open, const cv::Size& size, const CurveLineSink& sink);

}  // namespace kelmo
