// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <opencv2/core/types.hpp>

#include "effects/beam/lines/curve_line.h"

namespace kelmo {

inline constexpr std::size_t kTextArcs = 5;

/// Five arcs that swing across a text's `box` (pixels of a picture of `size`), from far above it to
/// far below. `phases` (-1..1) shift them to the sides; their ends stay within the box.
std::array<CurveLine, kTextArcs> TextArcs(const cv::Rect& box, const cv::Size& size,
                                          const std::array<float, kTextArcs>& phases);

}  // namespace kelmo
