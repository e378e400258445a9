// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/sample_sound.h"

#include <cmath>

#include "host/cli/render/timeline_sound.h"

namespace kelmo::host {

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kBeatSeconds = 0.4;
constexpr double kChord[] = {220.0, 277.2, 329.6, 659.3, 1318.5, 2637.0, 5274.0};

/// The sound at a moment, -1..1.
double Level(double seconds) {
    const double sinceBeat = std::fmod(seconds, kBeatSeconds);
    // A drum: a falling tone that dies away.
    double level = 0.5 * std::exp(-sinceBeat * 9) *
                   std::sin(kTurn * (55 * sinceBeat + 6 * (1 - std::exp(-sinceBeat * 30))));
    double share = 0.16;
    for (const double pitch : kChord) {
        level += share * (0.6 + 0.4 * std::exp(-sinceBeat * 6)) * std::sin(kTurn * pitch * seconds);
        share *= 0.7;
    }
    return level;
}

}  // namespace

std::span<int16_t> SampleSound::Frame(int64_t frame) {
    const auto begin = static_cast<int64_t>(rate.TimeOf(frame) * kSoundRate);
    const auto end = static_cast<int64_t>(rate.TimeOf(frame + 1) * kSoundRate);
    samples.resize(static_cast<size_t>(2 * (end - begin)));
    for (int64_t i = begin; i < end; ++i) {
        const auto value = static_cast<int16_t>(30000 * Level(static_cast<double>(i) / kSoundRate));
        const auto at = static_cast<size_t>(2 * (i - begin));
        samples[at] = samples[at + 1] = value;
    }
    return samples;
}

}  // namespace kelmo::host
