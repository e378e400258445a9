// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>

namespace kelmo {

/// Where one end of a polyline step lies on the two outlines that a bevel joins.
class EdgeExtendInfo {
public:
    EdgeExtendInfo() = default;
    EdgeExtendInfo(const cv::Point2f& body, const cv::Point2f& face)
        : bodyPoint(body), facePoint(face) {}
    virtual ~EdgeExtendInfo() = default;
    EdgeExtendInfo(const EdgeExtendInfo&) = default;
    EdgeExtendInfo& operator=(const EdgeExtendInfo&) = default;

    cv::Point2f bodyPoint;
    cv::Point2f facePoint;
    cv::Point2f extra;     ///< always (0, 0)
    bool isJoint = false;  ///< always false
    bool isEnd = true;     ///< always true
};

}  // namespace kelmo
