// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>

namespace kelmo {

/// Mean and standard deviation of a picture in the space l (lightness), alpha (yellow against
/// blue), beta (red against green). Source: E. Reinhard et al., "Color Transfer between Images",
/// 2001.
struct ColorStatistics {
    std::array<double, 3> mean{};
    std::array<double, 3> deviation{};
};

/// Pictures of at most this many pixels are measured on the calling thread.
inline constexpr int64_t kSerialMeasureLimit = 10000;

/// Measures a picture of 4 channels of 8 bits, B, G, R, A; alpha is not looked at. Cone responses
/// below 0.03 count as 0.03, so that black has a logarithm. Zeros for an empty picture.
///
/// `scratch` is the picture in that space, 3 floats a pixel: kept by the caller for its memory.
ColorStatistics MeasureColor(const cv::Mat& bgra, cv::Mat& scratch);

/// The two roads of `MeasureColor`, which differ in rounding alone.
ColorStatistics MeasureColorSerial(const cv::Mat& bgra);
ColorStatistics MeasureColorParallel(const cv::Mat& bgra, cv::Mat& scratch);

}  // namespace kelmo
