// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/audio/audio_kernels.h"

#include <bit>
#include <numeric>

// A second version of a loop for processors with wider vectors, picked when the library is loaded.
// Not under sanitizers: their start-up does not survive the picking. The results are the same.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_THREAD__) && !defined(__SANITIZE_ADDRESS__)
#define KELMO_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define KELMO_WIDE
#endif

namespace kelmo::audio {

namespace {

/// Factors below this one count as 0: numbers below the normal ones would slow down every frame of
/// a long silence. It is reached after 131 frames; by then all the falls before have multiplied the
/// level by less than any number there is.
constexpr float kSmallestFactor = 1e-6F;

constexpr float kFullScale = 32768.0F;

KELMO_WIDE void MixOne(const int16_t* words, int32_t count, float* output) {
    for (int32_t i = 0; i < count; ++i) {
        output[i] = static_cast<float>(words[i]) * (1.0F / kFullScale);
    }
}

KELMO_WIDE void MixTwo(const int16_t* words, int32_t count, float* output) {
    for (int32_t i = 0; i < count; ++i) {
        output[i] = static_cast<float>(words[2 * i] + words[2 * i + 1]) * (0.5F / kFullScale);
    }
}

// Logarithm and exponential to base 2 in forms that compilers turn into vector code, for normal
// positive numbers and exponents from -126 to 126.

inline float Log2(float value) {
    // value = 2^exponent * mantissa, mantissa within a factor of sqrt(2) around 1: the bits of
    // sqrt(1/2) subtracted from those of the value leave the exponent in the upper bits.
    constexpr int32_t kRootOfHalf = 0x3F3504F3;
    const int32_t bits = std::bit_cast<int32_t>(value) - kRootOfHalf;
    const float mantissa = std::bit_cast<float>((bits & 0x007FFFFF) + kRootOfHalf);
    // ln(m) = 2 * artanh(s) with s = (m - 1) / (m + 1), at most 0.172: five terms of its series.
    const float s = (mantissa - 1.0F) / (mantissa + 1.0F);
    const float t = s * s;
    const float series = 1.0F + t * (1.0F / 3 + t * (1.0F / 5 + t * (1.0F / 7 + t * (1.0F / 9))));
    constexpr float kTwoOverLn2 = 2.88539008F;
    return static_cast<float>(bits >> 23) + kTwoOverLn2 * s * series;
}

inline float Exp2(float value) {
    constexpr float kLimit = 126.0F;
    value = value > -kLimit ? value : -kLimit;
    value = value < kLimit ? value : kLimit;
    const auto whole = static_cast<int32_t>(value + (value < 0.0F ? -0.5F : 0.5F));
    // e^x for at most 0.347 either way: the series of the exponential up to the sixth power.
    const float x = (value - static_cast<float>(whole)) * 0.693147181F;
    const float series =
        1.0F +
        x * (1.0F + x * (1.0F / 2 +
                         x * (1.0F / 6 + x * (1.0F / 24 + x * (1.0F / 120 + x * (1.0F / 720))))));
    return series * std::bit_cast<float>((whole + 127) << 23);
}

void MixMany(const int16_t* words, int32_t count, int32_t channels, float* output) {
    const float scale = 1.0F / kFullScale / static_cast<float>(channels);
    for (int32_t i = 0; i < count; ++i, words += channels) {
        output[i] = static_cast<float>(std::accumulate(words, words + channels, 0)) * scale;
    }
}

}  // namespace

void MixDown(const int16_t* words, int32_t count, int32_t channels, float* output) {
    switch (channels) {
        case 1:
            MixOne(words, count, output);
            break;
        case 2:
            MixTwo(words, count, output);
            break;
        default:
            MixMany(words, count, channels, output);
            break;
    }
}

KELMO_WIDE void Multiply(const float* __restrict left, const float* __restrict right, int32_t count,
                         float* __restrict output) {
    for (int32_t i = 0; i < count; ++i) output[i] = left[i] * right[i];
}

KELMO_WIDE void Powers(const float* __restrict complexes, int32_t count, float scale,
                       float* __restrict output) {
    for (int32_t i = 0; i < count; ++i) {
        const float re = complexes[2 * i] * scale;
        const float im = complexes[2 * i + 1] * scale;
        const float power = re * re + im * im;
        output[i] = power > kFloorPower ? power : kFloorPower;
    }
}

KELMO_WIDE void ToDecibels(float* values, int32_t count, float floor) {
    constexpr float kDecibelsPerOctave = 3.01029996F;
    for (int32_t i = 0; i < count; ++i) {
        const float level = kDecibelsPerOctave * Log2(values[i]);
        // Rounding must not lift silence off the floor.
        values[i] = ((values[i] > kFloorPower) & (level > floor)) ? level : floor;
    }
}

KELMO_WIDE void Raise(float* values, int32_t count, float exponent, float floor) {
    for (int32_t i = 0; i < count; ++i) {
        const float level = Exp2(exponent * Log2(values[i]));
        values[i] = ((values[i] > kFloorPower) & (level > floor)) ? level : floor;
    }
}

KELMO_WIDE void RiseOrFall(const float* __restrict fresh, int32_t count, float floor,
                           float* __restrict levels, float* __restrict factors) {
    for (int32_t i = 0; i < count; ++i) {
        const float fallen = (levels[i] - floor) * factors[i] + floor;
        const float next = factors[i] > kSmallestFactor ? factors[i] * kFallOff : 0.0F;
        const bool rises = fresh[i] > levels[i];
        levels[i] = rises ? fresh[i] : fallen;
        factors[i] = rises ? kFallOff : next;
    }
}

KELMO_WIDE void Stretch(const float* __restrict levels, int32_t count, const Stretching& stretching,
                        float* __restrict output) {
    const Stretching s = stretching;
    for (int32_t i = 0; i < count; ++i) {
        float value = (levels[i] - s.floor) * s.factor;
        value = value > s.low ? value : s.low;
        value = value < s.high ? value : s.high;
        value = (value - s.low) * s.widen;
        // The reciprocal may be a hair too large.
        output[i] = value < 1.0F ? value : 1.0F;
    }
}

KELMO_WIDE float Sum(const float* values, int32_t count) {
    // Sums that do not wait for each other.
    constexpr int32_t kSums = 16;
    float sums[kSums] = {};
    int32_t i = 0;
    for (; i + kSums <= count; i += kSums) {
        for (int32_t j = 0; j < kSums; ++j) sums[j] += values[i + j];
    }
    for (; i < count; ++i) sums[0] += values[i];
    return std::accumulate(sums, sums + kSums, 0.0F);
}

}  // namespace kelmo::audio
