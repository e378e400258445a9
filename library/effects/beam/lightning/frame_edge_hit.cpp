// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/frame_edge_hit.h"

#include <cmath>

namespace kelmo {

std::optional<cv::Point2f> FrameEdgeHit(const cv::Point2f& from, const cv::Point2f& through) {
    const cv::Point2f way = through - from;
    if (!std::isfinite(way.x) || !std::isfinite(way.y)) return std::nullopt;
    std::optional<cv::Point2f> hit;
    float nearest = 0.0F;
    const auto consider = [&](float steps, const cv::Point2f& point) {
        // NaN, from a ray along the edge, is no step.
        if (!(steps >= 0.0F) || std::abs(point.x) > 1.0F || std::abs(point.y) > 1.0F) return;
        if (hit && steps >= nearest) return;
        hit = point;
        nearest = steps;
    };
    const auto level = [&](float y) {
        const float steps = (y - through.y) / way.y;
        consider(steps, {through.x + steps * way.x, y});
    };
    const auto upright = [&](float x) {
        const float steps = (x - through.x) / way.x;
        consider(steps, {x, through.y + steps * way.y});
    };
    // Of a corner's two edges the earlier wins: top, right, bottom, left.
    if (way.y != 0.0F) level(1.0F);
    if (way.x != 0.0F) upright(1.0F);
    if (way.y != 0.0F) level(-1.0F);
    if (way.x != 0.0F) upright(-1.0F);
    return hit;
}

}  // namespace kelmo
