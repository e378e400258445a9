// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "contract/frame_record.h"

namespace kelmo {

/// A CPU record of a picture, borrowed from it.
inline FrameRecord PictureRecord(const cv::Mat& picture) {
    FrameRecord record =
        FrameRecord::TargetLess(picture.cols, picture.rows, static_cast<int32_t>(picture.step));
    record.pixels = picture.data;
    record.channels = picture.channels();
    return record;
}

}  // namespace kelmo
