// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/media/common/frame_rate.h"

namespace kelmo::host {

/// A drum on every beat over a held chord, made by rule: what effects that follow sound are shown
/// with where there is none. Interleaved stereo at kSoundRate.
class SampleSound {
public:
    explicit SampleSound(FrameRate frameRate) : rate(frameRate) {}
    /// The samples of a frame; valid until the next call.
    std::span<int16_t> Frame(int64_t frame);

private:
    FrameRate rate;
    std::vector<int16_t> samples;
};

}  // namespace kelmo::host
