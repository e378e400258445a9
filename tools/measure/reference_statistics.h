// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>

#include "effects/image/color_statistics.h"

namespace kelmo::measure {

/// Measures the picture in a file, as Match Colour measures a frame. Transparent pictures are
/// measured over black, as frames are: premultiplied. Grey pictures and 16 bits a channel are fine.
/// Throws std::runtime_error with a sentence when there is no picture.
ColorStatistics MeasureFile(const std::string& path);

/// "-p mean_b=-0.85 -p mean_g=..." with six values, ready to stand behind `-e "Match Colour"`.
/// Six digits after the point: finer than a step of 1 / 255 moves any of them.
std::string AsParameters(const ColorStatistics& statistics);

/// One JSON object with the six names.
std::string AsJson(const ColorStatistics& statistics);

}  // namespace kelmo::measure
