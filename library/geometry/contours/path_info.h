// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core/types.hpp>

namespace kelmo {

/// Values of `PathInfo::type`.
enum PathType : int32_t { kPathLine = 0, kPathQuadratic = 1, kPathCubic = 2 };

/// One segment of an outline, in normalised frame space (y up, y from -1 to 1 over the frame, x
/// from -W/H to W/H).
class PathInfo {
public:
    PathInfo() = default;
    virtual ~PathInfo() = default;
    PathInfo(const PathInfo&) = default;
    PathInfo& operator=(const PathInfo&) = default;

    static PathInfo Line(const cv::Point2f& start, const cv::Point2f& end);
    static PathInfo Quadratic(const cv::Point2f& start, const cv::Point2f& control,
                              const cv::Point2f& end);
    static PathInfo Cubic(const cv::Point2f& start, const cv::Point2f& control1,
                          const cv::Point2f& control2, const cv::Point2f& end);

    /// The point at parameter `t`, 0 at `start` and 1 at `end`.
    cv::Point2f At(float t) const;

    cv::Point2f start;
    cv::Point2f end;
    cv::Point2f control1;  ///< quadratic: the only control point; line: equal to `start`
    cv::Point2f control2;  ///< cubic only; otherwise equal to `end`
    int32_t type = kPathLine;
    bool subdivide = true;  ///< false: the segment is flattened to a single step
};

}  // namespace kelmo
