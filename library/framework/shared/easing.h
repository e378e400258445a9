// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Curves of a progress, most of them from 0 to 1.
namespace kelmo {

/// 3 t^2 - 2 t^3, worked out in double and rounded.
inline float SmoothTime(float t) {
    const double p = t;
    return static_cast<float>(3.0 * p * p - 2.0 * p * p * p);
}

/// One-dimensional cubic Bezier over the values a, b, c, d, by de Casteljau.
constexpr float BezierAt(float a, float b, float c, float d, float t) {
    const float ab = a + (b - a) * t;
    const float bc = b + (c - b) * t;
    const float cd = c + (d - c) * t;
    const float abc = ab + (bc - ab) * t;
    const float bcd = bc + (cd - bc) * t;
    return abc + (bcd - abc) * t;
}

/// Falls and bounces three times before it rests at 1.
constexpr float Bounce(float t) {
    constexpr float k = 7.5625F;
    if (t < 1.0F / 2.75F) return k * t * t;
    if (t < 2.0F / 2.75F) {
        const float u = t - 1.5F / 2.75F;
        return k * u * u + 0.75F;
    }
    if (t < 2.5F / 2.75F) {
        const float u = t - 2.25F / 2.75F;
        return k * u * u + 0.9375F;
    }
    const float u = t - 2.625F / 2.75F;
    return k * u * u + 0.984375F;
}

}  // namespace kelmo
