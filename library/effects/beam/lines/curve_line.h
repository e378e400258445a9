// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <opencv2/core/types.hpp>

namespace kelmo {

/// One white line of a beam in device space, with the share of its path's progress that it covers.
struct CurveLine {
    cv::Point2f start;
    cv::Point2f end;
    cv::Point2f control1;
    cv::Point2f control2;
    float startProgress = 0.0F;
    float endProgress = 1.0F;

    static CurveLine Straight(const cv::Point2f& from, const cv::Point2f& to, float startProgress,
                              float endProgress) {
        return {from, to, from, to, startProgress, endProgress};
    }
};

/// Takes lines in the order of their path.
using CurveLineSink = std::function<void(const CurveLine&)>;

}  // namespace kelmo
