// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/mask_edge.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace kelmo {

namespace {

constexpr float kLimit = 200.0f;
/// A ramp narrower than this, in pixels of the mask, shows steps.
constexpr float kHardRamp = 1.0f;

float Finite(float value) {
    return std::isfinite(value) ? value : 0.0f;
}

/// Distance to the edge in pixels, positive inside. The distance transform measures from pixel
/// centre to pixel centre: half a pixel to the edge between them, moved by where the mask crosses
/// there.
cv::Mat SignedDistance(const cv::Mat& mask) {
    const cv::Mat inside = mask > 127;
    cv::Mat outside, in, out;
    cv::bitwise_not(inside, outside);
    cv::distanceTransform(inside, in, cv::DIST_L2, cv::DIST_MASK_5);
    cv::distanceTransform(outside, out, cv::DIST_L2, cv::DIST_MASK_5);
    for (int y = 0; y < in.rows; ++y) {
        float* i = in.ptr<float>(y);
        const float* o = out.ptr<float>(y);
        for (int x = 0; x < in.cols; ++x) i[x] = i[x] > 0 ? i[x] - 0.5f : 0.5f - o[x];
    }
    return in;
}

}  // namespace

MaskEdge MaskEdge::Clamped() const {
    return {std::clamp(Finite(thickness), -kLimit, kLimit),
            std::clamp(Finite(feather), 0.0f, kLimit)};
}

void ApplyMaskEdge(const MaskEdge& edge, cv::Size frameSize, cv::Mat& mask) {
    if (edge.IsNeutral() || mask.empty()) return;
    double low = 0, high = 0;
    cv::minMaxLoc(mask, &low, &high);
    if (high <= 127 || low > 127) return;
    const float frameShorter = static_cast<float>(std::min(frameSize.width, frameSize.height));
    const float perUnit = static_cast<float>(std::min(mask.cols, mask.rows)) / 1080.0f;
    // What one pixel of the frame is in the mask: no ramp is drawn narrower.
    const float pixel = static_cast<float>(std::min(mask.cols, mask.rows)) / frameShorter;
    const float ramp = std::max({edge.feather * perUnit, kHardRamp, pixel});
    cv::Mat distance = SignedDistance(mask);
    // coverage = (distance + thickness) / ramp + 1/2
    distance.convertTo(mask, CV_8U, 255.0 / ramp, 255.0 * (edge.thickness * perUnit / ramp + 0.5));
}

}  // namespace kelmo
