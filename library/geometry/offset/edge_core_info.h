// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>

namespace kelmo {

/// What is kept for a point of a polyline beside its place.
class EdgeCoreInfo {
public:
    EdgeCoreInfo() = default;
    explicit EdgeCoreInfo(const cv::Point2f& direction) : dir(direction) {}
    virtual ~EdgeCoreInfo() = default;
    EdgeCoreInfo(const EdgeCoreInfo&) = default;
    EdgeCoreInfo& operator=(const EdgeCoreInfo&) = default;

    /// Where the point goes when the outline is offset by 1 into the material. Longer than 1 at
    /// corners, so that the moved edges lie at distance 1.
    cv::Point2f dir;
};

}  // namespace kelmo
