// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/wave_bars.h"

#include <algorithm>

namespace kelmo {
namespace {

/// Where a bar lies before it rises: tenths of the box above its bottom, and its share of the beam.
struct BarPlace {
    float tenths;
    float startProgress;
    float endProgress;
};
constexpr BarPlace kPlaces[kWaveBars] = {{1.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.5F},
                                         {3.0F, 0.5F, 1.0F}, {5.0F, 0.2F, 0.6F},
                                         {7.0F, 0.3F, 0.9F}, {9.0F, 0.1F, 0.7F}};
/// How far the controls stand above and below their ends, in heights of the bars' range.
constexpr float kSwing = 0.3F;

/// The part of the person that bars run through, device space: y points up, so bottom < top.
struct Range {
    float left, top, right, bottom;

    Range(const cv::Rect& box, const cv::Size& size) {
        const auto x = static_cast<float>(box.x);
        const auto y = static_cast<float>(box.y);
        const auto across = static_cast<float>(box.width);
        const auto down = static_cast<float>(box.height);
        const auto columns = static_cast<float>(size.width);
        const auto rows = static_cast<float>(size.height);
        left = ((x + across / 8.0F) / columns - 0.5F) * 2.0F;
        right = ((x + across * 7.0F / 8.0F) / columns - 0.5F) * 2.0F;
        top = ((y + down / 10.0F) / rows - 0.5F) * -2.0F;
        bottom = ((y + down * 7.0F / 8.0F) / rows - 0.5F) * -2.0F;
    }
};

}  // namespace

std::array<CurveLine, kWaveBars> WaveBars(const cv::Rect& box, const cv::Size& size,
                                          const std::array<float, kWaveBars>& phases, float turn) {
    const Range range(box, size);
    const float width = range.right - range.left;
    const float height = range.bottom - range.top;  // negative
    const float tenth = height / 10.0F;
    const float risen = turn * height;
    const float highest = range.top + tenth;
    const auto foldX = [&](float x) { return std::clamp(x, range.left, range.right); };
    const auto foldY = [&](float y) {
        if (y < range.bottom) return highest - (range.bottom - y);
        return y > highest ? y - highest + range.bottom : y;
    };
    std::array<CurveLine, kWaveBars> bars;
    for (std::size_t i = 0; i < kWaveBars; ++i) {
        const BarPlace& place = kPlaces[i];
        const float shift = phases[i] * width / 10.0F;
        const float drift = phases[i] * height / 20.0F - risen;
        float startX = foldX(range.left + shift);
        float endX = foldX(range.right + shift);
        if (i % 2 == 1) std::swap(startX, endX);  // every other bar runs back
        const float startY = range.bottom - place.tenths * tenth + drift;
        // The first bar is aslant.
        const float endY =
            i == 0 ? range.bottom - 2.0F * tenth - phases[i] * tenth - risen : startY;
        const cv::Point2f start(startX, foldY(startY));
        const cv::Point2f end(endX, foldY(endY));
        const cv::Point2f swing(0.0F, kSwing * (highest - range.bottom));
        bars[i] = {start, end, start + swing, end - swing, place.startProgress, place.endProgress};
    }
    return bars;
}

}  // namespace kelmo
