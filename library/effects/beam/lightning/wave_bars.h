// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <opencv2/core/types.hpp>

#include "effects/beam/lines/curve_line.h"

namespace kelmo {

inline constexpr std::size_t kWaveBars = 6;

/// The wavy bars that rise through a person's `box`, in pixels of a picture of `size`. `phases`
/// (-1..1) give each bar its place; `turn` (0..1) is how far they have risen: bars that leave at
/// the top come back at the bottom.
std::array<CurveLine, kWaveBars> WaveBars(const cv::Rect& box, const cv::Size& size,
                                          const std::array<float, kWaveBars>& phases, float turn);

}  // namespace kelmo
