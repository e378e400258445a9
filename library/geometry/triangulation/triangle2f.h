// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>

namespace kelmo {

/// A triangle of a face. Its corners are points of the contours bit for bit: points are compared
/// exactly.
struct Triangle2f {
    cv::Point2f a;
    cv::Point2f b;
    cv::Point2f c;
};

}  // namespace kelmo
