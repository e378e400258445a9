// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// The loops of the audio analysis over samples and bins. Arrays of one call do not overlap unless
/// it is said; each is `count` long.
namespace kelmo::audio {

/// Smallest power that is told from silence: -150 decibels.
inline constexpr float kFloorPower = 1e-15F;
/// Factor of the first fall of a bin, and what each further fall multiplies its factor by.
inline constexpr float kFallOff = 0.9F;

/// Means of the channels of interleaved samples, -1..1.
void MixDown(const int16_t* words, int32_t count, int32_t channels, float* output);

void Multiply(const float* left, const float* right, int32_t count, float* output);

/// Power of complex numbers (real and imaginary part in turn) times `scale`, at least kFloorPower.
void Powers(const float* complexes, int32_t count, float scale, float* output);

/// Powers become 10 * log10 of themselves; the smallest becomes `floor` exactly.
void ToDecibels(float* values, int32_t count, float floor);
/// Powers are raised to `exponent`, at least to `floor`; the smallest becomes `floor` exactly. Good
/// to about 2e-6 of the result.
void Raise(float* values, int32_t count, float exponent, float floor);

/// Levels rise to `fresh` at once; where it is not above them they fall towards `floor` by their
/// factor, which shrinks.
void RiseOrFall(const float* fresh, int32_t count, float floor, float* levels, float* factors);

struct Stretching {
    /// Level that counts as 0, and 1 over the height of the scale.
    float floor;
    float factor;
    /// The part of 0..1 that is stretched over the output, and 1 over its width.
    float low;
    float high;
    float widen;
};

/// Levels as values of 0..1.
void Stretch(const float* levels, int32_t count, const Stretching& stretching, float* output);

float Sum(const float* values, int32_t count);

}  // namespace kelmo::audio
