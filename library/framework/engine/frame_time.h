// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

#include "contract/engine.h"

/// The clock of a frame as shaders and effects see it.
namespace kelmo {

/// Animations count in ticks, whatever the frame rate of the clip.
inline constexpr float kTicksPerSecond = 25.0F;

/// `position` frames at `frameRate`, in seconds. A host without a usable rate counts as 25 a
/// second, so that no shader ever sees an infinite time.
inline float SecondsAt(int32_t position, float frameRate) {
    return static_cast<float>(position) / (frameRate > 0.0F ? frameRate : kTicksPerSecond);
}

/// The moment of a frame: all in seconds but the rate, which is frames per second.
struct FrameTime {
    float position = 0.0F;
    float duration = 0.0F;
    float rate = kTicksPerSecond;

    static FrameTime At(int32_t position, int32_t duration, float rate) {
        return {SecondsAt(position, rate), SecondsAt(duration, rate), rate};
    }
    float Tick() const { return position * kTicksPerSecond; }
    /// 0..1 over the whole effect; 0 when it has no length.
    float Progress() const { return duration > 0.0F ? position / duration : 0.0F; }
};

/// Where `value` stands in a cycle of `period`, 0..1 (1 excluded); 0 for a period that is not above
/// 0.
inline float CycleFraction(float value, float period) {
    if (!(period > 0.0F)) return 0.0F;
    const float turns = value / period;
    return turns - std::floor(turns);
}

/// Sends "global_time", "total_time", "current_pos", "total_len" and "frame_rate".
void UploadTime(NLEOpenGLEngineEffect& engine, const FrameTime& time);
/// The same without the last.
void UploadTimeAndLength(NLEOpenGLEngineEffect& engine, const FrameTime& time);
/// Sends the first two alone, which is all that most effects with passes of their own need.
void UploadGlobalTime(NLEOpenGLEngineEffect& engine, const FrameTime& time);

}  // namespace kelmo
