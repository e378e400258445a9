// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "framework/engine/frame_time.h"
#include "framework/shared/feedback_trail.h"

namespace kelmo {

/// When a memory of the last moments takes a new picture: once in a tick, whatever the frame rate.
/// A jump of six ticks or more forgets what was there.
class MemoryClock {
public:
    /// The tick of a frame, counted from the start of the effect.
    static int32_t IndexOf(int32_t position, float frameRate) {
        const double ticks = static_cast<double>(SecondsAt(position, frameRate)) * kTicksPerSecond;
        constexpr double kMost = 2e9;
        return static_cast<int32_t>(std::clamp(ticks, -kMost, kMost));
    }
    /// The picture of this tick stands already. Tick 0 is drawn each time.
    bool Repeats(int32_t index) const { return lastIndex != 0 && lastIndex == index; }
    bool Restarts(int32_t index) const { return trail.Restarts(index, false); }
    /// Ticks since the last picture, at least 1.
    int32_t Elapsed(int32_t index) const {
        return Restarts(index) ? 1 : std::max(index - lastIndex, 1);
    }
    /// The frame of this tick was drawn.
    void Keep(int32_t index) {
        trail.Keep(index);
        lastIndex = index;
    }

private:
    static constexpr int32_t kJump = 6;
    FeedbackTrail trail{kJump};
    int32_t lastIndex = 0;
};

}  // namespace kelmo
