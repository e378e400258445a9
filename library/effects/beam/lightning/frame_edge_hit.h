// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <optional>

namespace kelmo {

/// Where the ray that leaves `from` through `through` meets the edge of the frame, in device space,
/// at `through` or beyond. Nothing when it meets none: `through` lies outside and looks away, or
/// both are the same.
std::optional<cv::Point2f> FrameEdgeHit(const cv::Point2f& from, const cv::Point2f& through);

}  // namespace kelmo
