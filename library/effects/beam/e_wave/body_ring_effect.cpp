// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/e_wave/body_ring_effect.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

namespace kelmo {
namespace {

constexpr double kCertain = 100.0;
constexpr double kMarked = 250.0;
/// The lines of an open ring stand in the table so that both sides of the gap are neighbours.
constexpr int32_t kOpenOrder[4] = {0, 2, 3, 1};

}  // namespace

BodyRingEffect::BodyRingEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

bool BodyRingEffect::FindBodies(const FrameRecord& first, const WorkingSize& size) {
    const cv::Size working(size.width, size.height);
    FrameRecord found;
    if (!GetHumanMask(found, segmentation.Get(), mask, first, true, true, &working, true, 1) ||
        mask.empty()) {
        return false;
    }
    cv::threshold(mask, binary, kCertain, kMarked, cv::THRESH_BINARY);
    cv::findContours(binary, contours, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
    if (contours.empty() || IntOr("isMutiHuman", 0) == 1) return true;
    points.clear();
    for (const auto& contour : contours) {
        points.insert(points.end(), contour.begin(), contour.end());
    }
    contours.resize(1);
    cv::convexHull(points, contours.front(), false, true);
    return true;
}

cv::Rect BodyRingEffect::MakeRings(NLEOpenGLBeamEffect& lines, bool open, const WorkingSize& size,
                                   const std::function<Band(const cv::Rect&)>& bandOf) {
    cv::Rect all;
    int32_t base = 0;
    for (const auto& contour : contours) {
        const cv::Rect box = cv::boundingRect(contour);
        const cv::Rect ring = RingInBand(contour, box, bandOf(box));
        if (!ring.empty()) all |= ring;
        int32_t k = 0;
        RingLines(ring, open, cv::Size(size.width, size.height), [&](const CurveLine& line) {
            lines.SetLine(line, base + (open ? kOpenOrder[k] : k));
            ++k;
        });
        base += k;
    }
    if (base == 0) {
        constexpr float kClear[4] = {};
        lines.SetLine(CurveLine(), 0);
        lines.SetLineColor(kClear, 0);
    }
    lines.SetLineCount(std::max(base, 1));
    return all;
}

float BodyRingEffect::Cycle() {
    float cycle = 0.0F;
    if (FindFloat("duration", cycle) && std::isfinite(cycle)) {
        constexpr float kLongest = 1e6F;
        durationFrames = 1 + static_cast<int32_t>(std::clamp(cycle, 0.0F, kLongest) * 1000.0F);
    }
    return CycleFraction(Time().Tick(), static_cast<float>(durationFrames));
}

void BodyRingEffect::SendColor() {
    colorValue = IntOr("color", colorValue);
    engine->SetUniformInt("color", colorValue);
    colorBytes.Set(*engine, colorValue);
}

cv::Vec4f BodyRingEffect::Bound(const cv::Rect& box, float margin, const WorkingSize& size) {
    const auto columns = static_cast<float>(size.width);
    const auto rows = static_cast<float>(size.height);
    return {(static_cast<float>(box.x) - margin) / columns,
            (static_cast<float>(box.y) - margin) / rows,
            (static_cast<float>(box.x + box.width) + margin) / columns,
            (static_cast<float>(box.y + box.height) + margin) / rows};
}

}  // namespace kelmo
