// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <opencv2/core/types.hpp>
#include <vector>

namespace kelmo {

/// A closed line through its points; the last point joins the first.
using Polyline = std::vector<cv::Point2f>;

inline bool IsFinite(const cv::Point2f& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// The points of a line without those that are not finite.
inline Polyline FinitePoints(const Polyline& points) {
    Polyline finite;
    finite.reserve(points.size());
    for (const cv::Point2f& point : points) {
        if (IsFinite(point)) finite.push_back(point);
    }
    return finite;
}

}  // namespace kelmo
