// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/timeline_sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/media/common/file_names.h"

namespace kelmo::host {

FadeGains CrossFade(double fraction) {
    const double angle = std::clamp(fraction, 0.0, 1.0) * std::numbers::pi / 2;
    return {std::cos(angle), std::sin(angle)};
}

TimelineSound::TimelineSound(const RenderPlan& renderPlan, const std::vector<std::string>& paths)
    : plan(renderPlan) {
    for (const std::string& path : paths) {
        auto reader = CanBeReadAgain(path) ? AudioReader::Open(path, kSoundRate) : nullptr;
        if (reader && !reader->Info().present) reader.reset();
        readers.push_back(std::move(reader));
    }
}

bool TimelineSound::Present() const {
    return std::any_of(readers.begin(), readers.end(), [](const auto& r) { return r != nullptr; });
}

std::span<int16_t> TimelineSound::Frame(int64_t frame) {
    const int64_t first = plan.rate.FirstSampleOf(frame, kSoundRate);
    const int count = static_cast<int>(plan.rate.FirstSampleOf(frame + 1, kSoundRate) - first);
    mixed.assign(static_cast<size_t>(count) * 2, 0);
    for (size_t i = 0; i < readers.size(); ++i) {
        if (readers[i] && plan.clips[i].Covers(frame)) Mix(i, first, count);
    }
    return mixed;
}

std::vector<std::string> TimelineSound::Warnings() const {
    std::vector<std::string> all;
    for (const auto& reader : readers) {
        if (reader) all.insert(all.end(), reader->Warnings().begin(), reader->Warnings().end());
    }
    return all;
}

double TimelineSound::GainAt(size_t clip, int64_t sample) const {
    if (plan.transitionFrames == 0) return 1;
    const int64_t begin = plan.rate.FirstSampleOf(plan.transitionFirst, kSoundRate);
    const int64_t end =
        plan.rate.FirstSampleOf(plan.transitionFirst + plan.transitionFrames, kSoundRate);
    const double length = static_cast<double>(std::max<int64_t>(1, end - begin));
    const FadeGains gains = CrossFade(static_cast<double>(sample - begin) / length);
    return clip == 0 ? gains.first : gains.second;
}

void TimelineSound::Mix(size_t clip, int64_t firstSample, int count) {
    const ClipPlace& place = plan.clips[clip];
    const int64_t placeSample = plan.rate.FirstSampleOf(place.firstFrame, kSoundRate);
    const int64_t startSample = std::llround(place.start * kSoundRate);
    part.resize(static_cast<size_t>(count) * 2);
    readers[clip]->Read(startSample + firstSample - placeSample, count, part.data());
    for (int i = 0; i < count; ++i) {
        const double gain = GainAt(clip, firstSample + i);
        for (size_t k = static_cast<size_t>(i) * 2; k < static_cast<size_t>(i) * 2 + 2; ++k) {
            const double sum = mixed[k] + gain * part[k];
            mixed[k] = static_cast<int16_t>(std::clamp(std::lround(sum), -32768L, 32767L));
        }
    }
}

}  // namespace kelmo::host
