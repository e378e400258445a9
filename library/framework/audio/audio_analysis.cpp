// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/audio/audio_analysis.h"

#include <fftw3.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <mutex>

#include "framework/audio/audio_kernels.h"

namespace kelmo {

namespace {

/// Full scale: the power of -10 decibels.
constexpr double kTopPower = 0.1;
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

}  // namespace

/// The numbers of one run's level scale.
struct AudioAnalysis::Scale {
    float exponent;
    float floor;
    float top;

    explicit Scale(float compressRatio) : exponent(compressRatio), floor(-150.0F), top(-10.0F) {
        if (exponent == 0.0F) return;
        floor = static_cast<float>(std::pow(static_cast<double>(audio::kFloorPower), exponent));
        top = static_cast<float>(std::pow(kTopPower, exponent));
    }

    /// Never 0: exponents near 0 leave nothing between the ends.
    float Extent() const { return top != floor ? top - floor : 1.0F; }

    /// Turns powers of at least kFloorPower into levels.
    void ToLevels(float* powers, int32_t count) const {
        if (exponent == 0.0F) {
            audio::ToDecibels(powers, count, floor);
        } else if (exponent != 1.0F) {
            audio::Raise(powers, count, exponent, floor);
        }
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
        fallOff.assign(bins, audio::kFallOff);
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
    // The host's samples need not be aligned; the copy is.
    words.resize(static_cast<std::size_t>(present) * static_cast<std::size_t>(input.channels));
    if (!words.empty()) std::memcpy(words.data(), input.data, words.size() * sizeof(int16_t));
    float* const fresh = history + kept;
    audio::MixDown(words.data(), present, input.channels, fresh);
    std::fill(fresh + present, fresh + samples, 0.0F);

    audio::Multiply(window.data(), history, fftSize, fftInput);
    fftwf_execute(static_cast<fftwf_plan>(fftPlan));
}

AudioAnalysis::BinRange AudioAnalysis::PickBand(const AudioSettings& settings) const {
    // Without samples or rate bins have no width: the band is all of them.
    if (!(binWidth > 0.0F)) return {0, binCount - 1};
    return {std::max(0, IntegerPart(settings.frequencyMin / binWidth)),
            std::min(binCount - 1, IntegerPart(settings.frequencyMax / binWidth + 1.0F))};
}

void AudioAnalysis::FindLevels(BinRange range, const Scale& scale) {
    const int32_t count = range.last - range.first + 1;
    float* const fresh = newLevels.data() + range.first;
    audio::Powers(fftOutput[range.first], count, 1.0F / static_cast<float>(fftSize), fresh);
    scale.ToLevels(fresh, count);
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
    const int32_t count = range.last - range.first + 1;
    const float* const fresh = newLevels.data() + range.first;
    float* const level = levels.data() + range.first;
    float* const factor = fallOff.data() + range.first;
    if (samePosition) {
        std::copy_n(fresh, count, level);
        std::fill_n(factor, count, audio::kFallOff);
    } else {
        audio::RiseOrFall(fresh, count, scale.floor, level, factor);
    }
}

float AudioAnalysis::Stretch(BinRange range, const Scale& scale, const AudioSettings& settings) {
    const int32_t count = range.last - range.first + 1;
    const float* const level = levels.data() + range.first;
    float* const value = spectrum.data() + range.first;
    const float low = settings.audioMin;
    const float high = settings.audioMax;
    const float factor = 1.0F / scale.Extent();
    if (low == high) {
        std::transform(level, level + count, value, [&scale, factor, low](float l) {
            return (l - scale.floor) * factor > low ? 1.0F : 0.0F;
        });
    } else {
        audio::Stretch(level, count, {scale.floor, factor, low, high, 1.0F / (high - low)}, value);
    }
    return audio::Sum(value, count);
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
        static_cast<std::size_t>(firstBin),
        static_cast<std::size_t>(lastBin) + 1 - static_cast<std::size_t>(firstBin));
}

}  // namespace kelmo
