// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/picture/picture_change.h"

#include <cstring>
#include <opencv2/imgproc.hpp>

namespace kelmo {

namespace {
constexpr double kJumpDifference = 24.0;
}

Succession PictureChange::Next(PicturePyramid& frame) {
    std::swap(reduced, previousReduced);
    std::swap(small, previousSmall);
    frame.Stretch({256, 256}, reduced);
    const bool comparable = frame.Size() == size && !previousReduced.empty();
    size = frame.Size();
    if (comparable && std::memcmp(reduced.data, previousReduced.data, reduced.total() * 4) == 0) {
        std::swap(small, previousSmall);
        return Succession::kSame;
    }
    // Halving has a fast path, a reduction by 8 has none.
    cv::resize(reduced, halves[0], {128, 128}, 0, 0, cv::INTER_AREA);
    cv::resize(halves[0], halves[1], {64, 64}, 0, 0, cv::INTER_AREA);
    cv::resize(halves[1], small, {32, 32}, 0, 0, cv::INTER_AREA);
    if (!comparable) return Succession::kJump;
    const double difference =
        cv::norm(small, previousSmall, cv::NORM_L1) / static_cast<double>(small.total() * 3);
    return difference > kJumpDifference ? Succession::kJump : Succession::kContinues;
}

}  // namespace kelmo
