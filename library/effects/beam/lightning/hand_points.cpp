// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/hand_points.h"

#include <cmath>

namespace kelmo {
namespace {

/// Places in the list of body points, left and right.
constexpr std::size_t kHandIndex[] = {10, 4};
constexpr std::size_t kElbowIndex[] = {8, 3};
constexpr int32_t kBoth = 2;

std::optional<cv::Point2f> PointAt(const AIDATA::HumanPose& person, std::size_t index) {
    if (index >= person.points.size()) return std::nullopt;
    const auto& [x, y] = person.points[index];
    if (!(x >= 0.0F && y >= 0.0F && std::isfinite(x) && std::isfinite(y))) return std::nullopt;
    return cv::Point2f((x - 0.5F) * 2.0F, (y - 0.5F) * -2.0F);
}

}  // namespace

HandPoints HandPoints::Of(const AIDATA::HumanPose& person) {
    HandPoints found;
    for (std::size_t side = 0; side < kSides; ++side) {
        found.hands[side] = PointAt(person, kHandIndex[side]);
        found.elbows[side] = PointAt(person, kElbowIndex[side]);
    }
    return found;
}

void HandPoints::Choose(int32_t leftOrRight) {
    for (std::size_t side = 0; side < kSides; ++side) {
        if (leftOrRight != kBoth && leftOrRight != static_cast<int32_t>(side)) hands[side].reset();
    }
}

}  // namespace kelmo
