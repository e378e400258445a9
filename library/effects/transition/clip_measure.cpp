// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/clip_measure.h"

#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

constexpr int kLevels = 256;
/// The part of the pixels at each end that does not count, worked out in single precision.
constexpr float kPercent = 5.0F;

/// Level at which the counts from `from` on, in steps of `step`, exceed `limit`; the far end
/// otherwise.
int LevelBeyond(const std::array<int64_t, kLevels>& histogram, int64_t limit, int from, int step) {
    int64_t sum = 0;
    const int end = step > 0 ? kLevels - 1 : 0;
    for (int level = from;; level += step) {
        sum += histogram[level];
        if (sum > limit || level == end) return level;
    }
}

void ToGray(const cv::Mat& bgra, cv::Mat& gray) {
    cv::cvtColor(bgra, gray, cv::COLOR_BGRA2GRAY);
}

}  // namespace

bool MeasureGrayRange(const cv::Mat& bgra, cv::Mat& gray, GrayRange& range) {
    if (bgra.empty()) return false;
    ToGray(bgra, gray);
    const cv::Rect content = cv::boundingRect(gray);
    if (content.empty()) return false;
    std::array<int64_t, kLevels> histogram{};
    for (int y = content.y; y < content.y + content.height; ++y) {
        const uint8_t* const row = gray.ptr(y);
        for (int x = content.x; x < content.x + content.width; ++x) ++histogram[row[x]];
    }
    const float pixels = static_cast<float>(content.area());
    const auto limit = static_cast<int64_t>(pixels * kPercent * 0.01F);
    range.low = static_cast<float>(LevelBeyond(histogram, limit, 0, 1)) / 255.0F;
    range.high = static_cast<float>(LevelBeyond(histogram, limit, kLevels - 1, -1)) / 255.0F;
    return true;
}

cv::Rect2f MeasureContent(const cv::Mat& bgra, cv::Mat& gray) {
    if (bgra.empty()) return {};
    ToGray(bgra, gray);
    const cv::Rect content = cv::boundingRect(gray);
    const auto w = static_cast<float>(bgra.cols);
    const auto h = static_cast<float>(bgra.rows);
    return {static_cast<float>(content.x) / w, static_cast<float>(content.y) / h,
            static_cast<float>(content.width) / w, static_cast<float>(content.height) / h};
}

OpaqueBand MeasureOpaqueBand(const cv::Mat& bgra, int32_t width) {
    OpaqueBand band{0, width - 1};
    if (bgra.empty() || bgra.channels() != 4) return band;
    const uint8_t* const row = bgra.ptr(bgra.rows / 2);
    const auto opaque = [row](int column) { return row[column * 4 + 3] != 0; };
    for (int j = 1; j <= bgra.cols - 2; ++j) {
        if (!opaque(j - 1)) {
            if (opaque(j) && opaque(j + 1)) band.left = j;
        } else if (opaque(j) && !opaque(j + 1)) {
            band.right = j;
            break;
        }
    }
    band.right = std::min(band.right, bgra.cols - 1);
    return band;
}

}  // namespace kelmo
