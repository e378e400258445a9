// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

namespace kelmo {

/// Finds what stands out from the background of a picture: text, a logo, any shape of high
/// contrast. Keeps its pictures between calls for their memory.
class InkPicture {
public:
    /// How far from the background ink begins, when nobody says.
    static constexpr int32_t kUsualThreshold = 20;

    /// `picture` has one channel. The most frequent level is the background, of the content's own
    /// box when that is a band as high as the picture; `reverse` takes the opposite level. The
    /// result, valid until the next call, is 255 for ink and 0 for background, without the
    /// outermost pixels.
    const cv::Mat& Find(const cv::Mat& picture, int32_t threshold, bool reverse);

private:
    void MeasureLight(const cv::Mat& picture);
    int32_t BackgroundLevel();

    cv::Mat light;
    cv::Mat band;
    cv::Mat ink;
};

}  // namespace kelmo
