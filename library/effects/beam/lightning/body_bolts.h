// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <opencv2/core.hpp>

#include "effects/beam/lightning/fractal_bolt.h"

namespace kelmo {

/// When the lightning of a body shines. Lengths in ticks.
struct BodyFlash {
    /// Ticks since this flash began.
    int32_t tick = 0;
    bool lit = false;

    static BodyFlash At(float ticks, int32_t interval, int32_t light);
};

/// The bolts that flicker on a body: each begins on it and ends somewhere near.
class BodyBolts {
public:
    static constexpr std::size_t kBolts = 4;

    /// Draws the bolts of a lit frame. On every third `tick` all of them jump to new places of the
    /// mask (one channel, not 0 where the body is) within `box`, pixels of the mask; between they
    /// tremble. Draws from the thread's random numbers.
    void Draw(int32_t tick, const cv::Mat& mask, const cv::Rect& box, const BoltLineSink& sink);

private:
    static cv::Point2f PlaceOnBody(const cv::Mat& mask, const cv::Rect& box);

    std::array<cv::Point2f, kBolts> startPoints;
    std::array<cv::Point2f, kBolts> endPoints;
};

}  // namespace kelmo
