// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

/// What transitions measure on a clip's picture of 4 channels of 8 bits.
namespace kelmo {

/// Levels 0..1 below and above which at most 5 percent of the pixels lie that belong to the
/// picture.
struct GrayRange {
    float low = 0.0F;
    float high = 0.0F;
};

/// False, and `range` as it was, for a picture that is black throughout. `gray` is kept for its
/// memory.
bool MeasureGrayRange(const cv::Mat& bgra, cv::Mat& gray, GrayRange& range);

/// The part of the picture that is not black, as fractions of its size (x, y, width, height; y
/// down); all zero when everything is black.
cv::Rect2f MeasureContent(const cv::Mat& bgra, cv::Mat& gray);

/// Borders, as columns, of the opaque band in the middle row: the last opening and the first
/// closing edge. Without an edge left is 0 and right `width` - 1.
struct OpaqueBand {
    int32_t left = 0;
    int32_t right = 0;
};
OpaqueBand MeasureOpaqueBand(const cv::Mat& bgra, int32_t width);

}  // namespace kelmo
