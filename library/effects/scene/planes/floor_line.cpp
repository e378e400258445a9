// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/floor_line.h"

#include <algorithm>
#include <cmath>

namespace kelmo {
namespace {

constexpr float kRadians = 0.017453292F;
constexpr float kWidestScaled = 1.8777778F;
constexpr float kUsualShape = 0.5625F;

}  // namespace

FloorLine::FloorLine(float x, float y, float degrees, const cv::Size& frame)
    : size(static_cast<float>(frame.width), static_cast<float>(frame.height)) {
    const float shape = size.width / size.height;
    const float stretch = shape <= kWidestScaled ? kUsualShape * shape : 1.0F;
    const cv::Point2f through(x * size.width, y * stretch * size.height);
    const float c = std::cos(degrees * kRadians), s = std::sin(degrees * kRadians);
    const cv::Point2f along(c, -s);
    down = {s, c};
    start = through - along * through.x;
    end = through + along * (size.width - through.x);
    for (const cv::Point2f corner : {cv::Point2f(0.0F, 0.0F),
                                     {size.width, 0.0F},
                                     {0.0F, size.height},
                                     {size.width, size.height}}) {
        farthest = std::max(farthest, (corner - through).dot(down));
    }
}

cv::Vec4f FloorLine::Parallel(float distance) const {
    const cv::Point2f a = start + down * distance, b = end + down * distance;
    return {a.x / size.width, 1.0F - a.y / size.height, b.x / size.width, 1.0F - b.y / size.height};
}

}  // namespace kelmo
