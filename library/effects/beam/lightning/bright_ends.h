// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// The two ends of what is bright in a picture, in device space.
struct BrightEnds {
    cv::Point2f topLeft;
    cv::Point2f bottomRight;
};

/// Finds the bright parts of a picture and its two ends. Keeps its pictures between calls for their
/// memory.
class BrightEndFinder {
public:
    /// `picture` has 4 channels. False, with `ends` as they were, when nothing is bright, 5 pixels
    /// at the border left out. `mask` becomes the bright parts, 4 channels, 0 or 250.
    bool FindAnchors(const cv::Mat& picture, BrightEnds& ends, cv::Mat& mask);

private:
    cv::Mat gray;
    cv::Mat framed;
    std::vector<std::vector<cv::Point>> contours;
};

}  // namespace kelmo
