// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/cli/render/render_plan.h"
#include "host/media/sound/audio_reader.h"

namespace kelmo::host {

inline constexpr int kSoundRate = 44100;  ///< samples a second

/// Gains of the two clips at a moment of the transition (0..1): constant power, so that unrelated
/// sounds keep their loudness in between.
struct FadeGains {
    double first = 1;
    double second = 0;
};
FadeGains CrossFade(double fraction);

/// The sound of the whole timeline, 16-bit stereo: that of the clips, cross-faded where they
/// overlap, silence where there is none.
///
/// Thread rule: one object, one thread. Throws MediaError.
class TimelineSound {
public:
    /// Inputs that can be read but once are silent: that is for their pictures.
    TimelineSound(const RenderPlan& plan, const std::vector<std::string>& paths);

    /// Whether any clip has sound.
    bool Present() const;

    /// The samples of a frame, exactly as many as belong to it at kSoundRate; valid until the next
    /// call.
    std::span<int16_t> Frame(int64_t frame);

    /// What went wrong without stopping the work.
    std::vector<std::string> Warnings() const;

private:
    void Mix(size_t clip, int64_t firstSample, int count);
    double GainAt(size_t clip, int64_t sample) const;

    RenderPlan plan;
    std::vector<std::unique_ptr<AudioReader>> readers;
    std::vector<int16_t> mixed;
    std::vector<int16_t> part;
};

}  // namespace kelmo::host
