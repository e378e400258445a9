// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/bolt_swing.h"

#include <algorithm>

namespace kelmo {
namespace {

constexpr float kSeconds = 2.0F;
constexpr float kDegreesAFrame = 2.0F;
/// A host may say any rate; more frames a second than these swing as these.
constexpr float kMostFramesASecond = 100000.0F;

int32_t PeriodFrames(float frameRate) {
    // NaN and rates below half a frame a second swing within one frame.
    if (!(frameRate > 0.0F)) return 1;
    return std::max(static_cast<int32_t>(kSeconds * std::min(frameRate, kMostFramesASecond)), 1);
}

}  // namespace

float CrownTurn(int32_t position, float frameRate) {
    const int32_t period = PeriodFrames(frameRate);
    const int32_t half = period / 2;
    const int32_t frame = position % period;
    const int32_t steps = half - 1 >= frame ? frame + 1 : -(frame - half + 1);
    return kDegreesAFrame * static_cast<float>(steps);
}

float BoltWobble::Next(float frameRate, float step) {
    const int32_t period = PeriodFrames(frameRate);
    const int32_t half = period / 2;
    int32_t offset = 0;
    if (counter < period) {
        offset = counter < half ? -counter : counter - 2 * half + 1;
    } else {
        counter = 0;
    }
    ++counter;
    return static_cast<float>(offset) * step;
}

}  // namespace kelmo
