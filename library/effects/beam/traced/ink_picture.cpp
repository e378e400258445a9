// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/ink_picture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

constexpr int32_t kLevels = 256;
/// From here on the background is bright and ink is darker than it.
constexpr int32_t kBright = 128;
/// Bytes that a level is taken from: three of brightness, one of weight.
constexpr std::size_t kWindow = 4;

/// The most frequent level, the lowest among equals.
int32_t MostFrequentLevel(const cv::Mat& picture) {
    std::array<int32_t, kLevels> counts = {};
    for (int row = 0; row < picture.rows; ++row) {
        const uint8_t* const bytes = picture.ptr<uint8_t>(row);
        for (int column = 0; column < picture.cols; ++column) ++counts[bytes[column]];
    }
    return static_cast<int32_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
}

uint8_t WeightedLevel(int32_t sum, int32_t weight) {
    // sum / 3, at least 1, times weight / 255, cut; in whole numbers.
    return static_cast<uint8_t>(std::max(sum, 3) * weight / (3 * 255));
}

}  // namespace

/// Every level is that of four neighbouring bytes in reading order, across the ends of rows; behind
/// the last pixel it is repeated.
void InkPicture::MeasureLight(const cv::Mat& picture) {
    light.create(picture.size(), CV_8UC1);
    const cv::Mat packed = picture.isContinuous() ? picture : picture.clone();
    const uint8_t* const from = packed.data;
    uint8_t* const to = light.data;
    const std::size_t count = packed.total();
    const std::size_t whole = count >= kWindow ? count - kWindow + 1 : 0;
    for (std::size_t i = 0; i < whole; ++i) {
        to[i] = WeightedLevel(from[i] + from[i + 1] + from[i + 2], from[i + 3]);
    }
    const uint8_t last = from[count - 1];
    const auto byte = [&](std::size_t i) { return i < count ? from[i] : last; };
    for (std::size_t i = whole; i < count; ++i) {
        to[i] = WeightedLevel(byte(i) + byte(i + 1) + byte(i + 2), byte(i + 3));
    }
}

int32_t InkPicture::BackgroundLevel() {
    const int32_t level = MostFrequentLevel(light);
    const cv::Rect content = cv::boundingRect(light);
    if (content.width < 1 || content.width >= light.cols || content.height != light.rows) {
        return level;
    }
    // Black bars at the sides are no background.
    light(content).copyTo(band);
    const int32_t contentLevel = MostFrequentLevel(band);
    const int right = light.cols - content.x - content.width;
    cv::copyMakeBorder(band, light, 0, 0, content.x, right, cv::BORDER_CONSTANT,
                       cv::Scalar::all(contentLevel));
    return contentLevel;
}

const cv::Mat& InkPicture::Find(const cv::Mat& picture, int32_t threshold, bool reverse) {
    CV_Assert(picture.type() == CV_8UC1);
    ink.create(picture.size(), CV_8UC1);
    ink.setTo(0);
    if (picture.cols < 3 || picture.rows < 3) return ink;
    MeasureLight(picture);
    int32_t level = BackgroundLevel();
    if (reverse) level = kLevels - 1 - level;
    const double distance = std::clamp(threshold, -kLevels, kLevels);
    if (level >= kBright) {
        cv::threshold(light, light, level - distance, 255.0, cv::THRESH_BINARY_INV);
    } else {
        cv::threshold(light, light, level * distance / 255.0 + level, 255.0, cv::THRESH_BINARY);
    }
    const cv::Rect inside(1, 1, picture.cols - 2, picture.rows - 2);
    light(inside).copyTo(ink(inside));
    return ink;
}

}  // namespace kelmo
