// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/audio_analysis.h"

#include <fftw3.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <mutex>
#include <opencv2/core/hal/hal.hpp>

namespace kelmo {

namespace {

/// Silence below, full scale above: powers of -150 and -10 decibels.
constexpr float kFloorPower = 1e-15F;
constexpr double kTopPower = 0.1;
constexpr float kFallOff = 0.9F;
constexpr double kTwoPi = 6.28318530718;
/// What a host without sound counts as.
constexpr int32_t kSilentSamples = 128;
/// More than ten seconds of a frame at the highest rates; keeps a broken count from taking memory.
constexpr int32_t kMaxSamples = 1 << 21;

constexpr int32_t kMaxChannels = 1024;

std::mutex& AudioMutex() {
    static std::mutex mutex;
    return mutex;
}

// FFTW's planner is one for the whole process, and other libraries may use it as well.
void GuardPlanner() {
    fftwf_make_planner_thread_safe();
}

AudioInput Sanitized(AudioInput input) {
    if (input.data == nullptr) return {1, kSilentSamples, 0, 2, nullptr};
    input.channels = std::clamp(input.channels, 1, kMaxChannels);
    input.samples = std::clamp(input.samples, 0, kMaxSamples);
    input.bytes = std::max(input.bytes, 0);
    return input;
}

float FiniteOr(float value, float fallback) {
    return std::isfinite(value) ? value : fallback;
}

AudioSettings Sanitized(const AudioSettings& given) {
    const AudioSettings defaults;
    // Far beyond 0..1, near enough for the difference of any two to be a number.
    constexpr float kFarthest = 1e6F;
    return {std::clamp(FiniteOr(given.audioMin, defaults.audioMin), -kFarthest, kFarthest),
            std::clamp(FiniteOr(given.audioMax, defaults.audioMax), -kFarthest, kFarthest),
            FiniteOr(given.frequencyMin, defaults.frequencyMin),
            FiniteOr(given.frequencyMax, defaults.frequencyMax),
            std::clamp(FiniteOr(given.compressRatio, defaults.compressRatio), -2.0F, 30.0F)};
}

int32_t TransformSize(int32_t samples) {
    const auto needed = static_cast<uint32_t>(std::max(samples, 2));
    return static_cast<int32_t>(2 * std::bit_ceil(needed));
}

/// The integer part, for numbers of any size.
int32_t IntegerPart(float value) {
    constexpr float kLimit = 1e9F;
    return static_cast<int32_t>(std::clamp(value, -kLimit, kLimit));
}

template <int32_t channels>
void MixDown(const uint8_t* bytes, int32_t samples, int32_t channelCount, float* output) {
    const int32_t count = channels > 0 ? channels : channelCount;
    const float scale = 1.0F / 32768.0F / static_cast<float>(count);
    for (int32_t i = 0; i < samples; ++i) {
        int32_t sum = 0;
        for (int32_t channel = 0; channel < count; ++channel) {
            int16_t word = 0;
            // The host's samples need not be aligned.
            std::memcpy(&word, bytes, sizeof word);
            bytes += sizeof word;
            sum += word;
        }
        output[i] = static_cast<float>(sum) * scale;
    }
}

}  // namespace

/// The numbers of one run's level scale.
struct AudioAnalysis::Scale {
    float exponent;
    float floor;
    float top;

    explicit Scale(float compressRatio) : exponent(compressRatio), floor(-150.0F), top(-10.0F) {
        if (exponent == 0.0F) return;
        floor = static_cast<float>(std::pow(static_cast<double>(kFloorPower), exponent));
        top = static_cast<float>(std::pow(kTopPower, exponent));
    }

    /// Never 0: exponents near 0 leave nothing between the ends.
    float Extent() const { return top != floor ? top - floor : 1.0F; }

    /// Levels of powers; both arrays may not overlap.
    void LevelsOf(const float* powers, float* levels, int count) const {
        if (exponent == 1.0F) {
            std::memcpy(levels, powers, sizeof(float) * static_cast<std::size_t>(count));
            return;
        }
        cv::hal::log32f(powers, levels, count);
        const float factor =
            exponent == 0.0F ? static_cast<float>(10.0 / std::log(10.0)) : exponent;
        for (int i = 0; i < count; ++i) levels[i] *= factor;
        if (exponent != 0.0F) cv::hal::exp32f(levels, levels, count);
    }
};

AudioAnalysis::~AudioAnalysis() {
    const std::lock_guard<std::mutex> guard(AudioMutex());
    ReleaseTransform();
}

void AudioAnalysis::ReleaseTransform() {
    GuardPlanner();
    fftwf_free(fftInput);
    fftwf_free(fftOutput);
    if (fftPlan != nullptr) fftwf_destroy_plan(static_cast<fftwf_plan>(fftPlan));
    fftInput = nullptr;
    fftOutput = nullptr;
    fftPlan = nullptr;
    fftReady = false;
}

void AudioAnalysis::PlanTransform() {
    GuardPlanner();
    const auto size = static_cast<std::size_t>(fftSize);
    fftInput = fftwf_alloc_real(size);
    fftOutput = fftwf_alloc_complex(size);
    if (fftInput == nullptr || fftOutput == nullptr) return;
    fftPlan = fftwf_plan_dft_r2c_1d(fftSize, fftInput, fftOutput, FFTW_ESTIMATE);
    // A run for the position of the run before reads the spectrum without a transform.
    std::memset(fftOutput, 0, size * sizeof(fftwf_complex));
}

bool AudioAnalysis::Prepare(int32_t samples, float frameRate, float floor) {
    const int32_t size = TransformSize(samples);
    if (fftReady && size != fftSize) ReleaseTransform();
    fftSize = size;
    if (!fftReady) {
        fftReady = true;
        binCount = (size + 1) / 2;
        const auto bins = static_cast<std::size_t>(binCount);
        levels.assign(bins, floor);
        spectrum.assign(bins, 0.0F);
        fallOff.assign(bins, kFallOff);
        powers.assign(bins, 0.0F);
        newLevels.assign(bins, floor);
        sampleRate = static_cast<float>(samples) * frameRate;
        binWidth = sampleRate * 0.5F / static_cast<float>(binCount);
        firstBin = 0;
        lastBin = binCount - 1;
        sampleHistory.assign(static_cast<std::size_t>(size), 0.0F);
        PlanTransform();
        window.resize(static_cast<std::size_t>(size));
        for (int32_t i = 0; i < size; ++i) {
            window[static_cast<std::size_t>(i)] =
                static_cast<float>((1.0 - std::cos(i * kTwoPi / size)) * 0.5);
        }
    }
    return fftInput != nullptr && fftOutput != nullptr && fftPlan != nullptr;
}

void AudioAnalysis::TakeSamples(const AudioInput& input, int32_t samples) {
    const std::size_t kept = sampleHistory.size() - static_cast<std::size_t>(samples);
    float* const history = sampleHistory.data();
    std::memmove(history, history + samples, kept * sizeof(float));
    const int64_t frameBytes = int64_t{input.channels} * 2;
    const auto present = static_cast<int32_t>(std::min<int64_t>(samples, input.bytes / frameBytes));
    const auto* const bytes = static_cast<const uint8_t*>(input.data);
    float* const fresh = history + kept;
    switch (input.channels) {
        case 1:
            MixDown<1>(bytes, present, 1, fresh);
            break;
        case 2:
            MixDown<2>(bytes, present, 2, fresh);
            break;
        default:
            MixDown<0>(bytes, present, input.channels, fresh);
            break;
    }
    std::fill(fresh + present, fresh + samples, 0.0F);

    const float* const hann = window.data();
    for (int32_t i = 0; i < fftSize; ++i) fftInput[i] = hann[i] * history[i];
    fftwf_execute(static_cast<fftwf_plan>(fftPlan));
}

AudioAnalysis::BinRange AudioAnalysis::PickBand(const AudioSettings& settings) const {
    // Without samples or rate bins have no width: the band is all of them.
    if (!(binWidth > 0.0F)) return {0, binCount - 1};
    return {std::max(0, IntegerPart(settings.frequencyMin / binWidth)),
            std::min(binCount - 1, IntegerPart(settings.frequencyMax / binWidth + 1.0F))};
}

void AudioAnalysis::FindLevels(BinRange range, const Scale& scale) {
    const float inverse = 1.0F / static_cast<float>(fftSize);
    const float* const output = fftOutput[0];
    float* const power = powers.data();
    for (int32_t k = range.first; k <= range.last; ++k) {
        const float re = output[2 * k] * inverse;
        const float im = output[2 * k + 1] * inverse;
        const float p = re * re + im * im;
        power[k] = p > kFloorPower ? p : kFloorPower;
    }
    float* const level = newLevels.data();
    scale.LevelsOf(power + range.first, level + range.first, range.last - range.first + 1);
    // The logarithm of the floor is not exactly the floor: silence has to be.
    const float floor = scale.floor;
    for (int32_t k = range.first; k <= range.last; ++k) {
        const float l = level[k] > floor ? level[k] : floor;
        level[k] = power[k] > kFloorPower ? l : floor;
    }
}

void AudioAnalysis::Smooth(BinRange range, const Scale& scale, float smoothing) {
    if (smoothing == 0.0F) return;
    for (auto k = static_cast<std::size_t>(range.first); k <= static_cast<std::size_t>(range.last);
         ++k) {
        if (levels[k] == scale.floor) continue;
        newLevels[k] = (1.0F - smoothing) * newLevels[k] + smoothing * levels[k];
    }
}

void AudioAnalysis::Fall(BinRange range, const Scale& scale, bool samePosition) {
    const float* const fresh = newLevels.data();
    float* const level = levels.data();
    float* const fall = fallOff.data();
    const float floor = scale.floor;
    if (samePosition) {
        for (int32_t k = range.first; k <= range.last; ++k) {
            level[k] = fresh[k];
            fall[k] = kFallOff;
        }
        return;
    }
    for (int32_t k = range.first; k <= range.last; ++k) {
        const float fallen = (level[k] - floor) * fall[k] + floor;
        const float fallNext = fall[k] * kFallOff;
        const bool rises = fresh[k] > level[k];
        level[k] = rises ? fresh[k] : fallen;
        fall[k] = rises ? kFallOff : fallNext;
    }
}

float AudioAnalysis::Stretch(BinRange range, const Scale& scale, const AudioSettings& settings) {
    const float low = settings.audioMin;
    const float high = settings.audioMax;
    const float floor = scale.floor;
    const float extent = scale.Extent();
    const float* const level = levels.data();
    float* const value = spectrum.data();
    if (low == high) {
        for (int32_t k = range.first; k <= range.last; ++k) {
            value[k] = (level[k] - floor) / extent > low ? 1.0F : 0.0F;
        }
    } else {
        const float span = high - low;
        for (int32_t k = range.first; k <= range.last; ++k) {
            float n = (level[k] - floor) / extent;
            n = n > low ? n : low;
            n = n < high ? n : high;
            value[k] = (n - low) / span;
        }
    }
    // Four sums that do not wait for each other.
    float sums[4] = {};
    int32_t k = range.first;
    for (; k + 3 <= range.last; k += 4) {
        for (int32_t i = 0; i < 4; ++i) sums[i] += value[k + i];
    }
    for (; k <= range.last; ++k) sums[0] += value[k];
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

void AudioAnalysis::Analyse(const AudioInput& given, const AudioSettings& givenSettings,
                            int32_t position, float frameRate, float smoothing) {
    const std::lock_guard<std::mutex> guard(AudioMutex());
    const AudioInput input = Sanitized(given);
    const AudioSettings settings = Sanitized(givenSettings);
    const Scale scale(settings.compressRatio);
    if (!Prepare(input.samples, FiniteOr(frameRate, 0.0F), scale.floor)) return;
    if (position != lastPosition) TakeSamples(input, input.samples);
    const BinRange range = PickBand(settings);
    if (range.first <= range.last) {
        FindLevels(range, scale);
        Smooth(range, scale, std::clamp(FiniteOr(smoothing, 0.0F), 0.0F, 1.0F));
        Fall(range, scale, position == lastPosition);
        const float sum = Stretch(range, scale, settings);
        intensity = sum / static_cast<float>(range.last - range.first + 1);
        firstBin = range.first;
        lastBin = range.last;
    }
    lastPosition = position;
}

std::span<const float> AudioAnalysis::Band() const {
    if (spectrum.empty()) return {};
    return std::span<const float>(spectrum).subspan(
        static_cast<std::size_t>(firstBin), static_cast<std::size_t>(lastBin - firstBin + 1));
}

}  // namespace kelmo
