// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <opencv2/core.hpp>

#include "contract/ai_filter.h"

namespace kelmo {

/// Whether a head is turned aside by 50 degrees at most.
inline bool LooksAhead(const AIDATA::HumanFaceInfo& face) {
    return std::abs(face.yaw) <= 50.0;
}

/// Where a head points, seen from the front, y down: of length 1, or nearly 0 when it looks at the
/// viewer.
inline cv::Point2f HeadDirection(const AIDATA::HumanFaceInfo& face) {
    constexpr double kRadians = 3.14159265358979323846 / 180.0;
    const double pitch = face.pitch * kRadians, yaw = face.yaw * kRadians;
    cv::Point2d way(-std::sin(yaw), std::cos(yaw) * std::sin(pitch));
    const double square = way.dot(way);
    if (square >= 1e-6) way /= std::sqrt(square);
    return {static_cast<float>(way.x), static_cast<float>(way.y)};
}

}  // namespace kelmo
