// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <opencv2/core.hpp>

namespace kelmo {

/// Parameter: how many times smaller than the clip the mask is worked out.
inline constexpr const char* kDownsampleParam = "downsampleRatio";

/// Size of the mask of a clip. A ratio below 1 says nothing and counts as 1; no ratio makes a
/// picture vanish.
inline cv::Size MaskStageSize(int32_t columns, int32_t rows, int32_t ratio) {
    if (ratio <= 1) return {columns, rows};
    return {std::max(columns / ratio, std::min(columns, 1)),
            std::max(rows / ratio, std::min(rows, 1))};
}

}  // namespace kelmo
