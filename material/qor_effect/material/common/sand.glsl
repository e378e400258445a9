// SPDX-License-Identifier: GPL-3.0-or-later
// When which place of a picture turns to sand: in the last `duration` seconds, from the lee side
// (right) on.
#include "frame.glsl"
#include "noise.glsl"

const float kSandLife = 0.42;  // of a grain, as a part of the duration

float SandProgress(float duration) {
    float takes = total_time > 0.0 ? min(duration, total_time) : duration;
    float begin = max(total_time - takes, 0.0);
    return takes > 0.0 ? clamp((global_time - begin) / takes, 0.0, 1.0) : 1.0;
}

// How long a place (y up) has been sand, in lives of a grain: below 0 not yet, from 1 on gone.
float SandAge(vec2 uv, float progress) {
    vec2 p = ToHeightUnits(uv);
    float order = 0.8 * (1.0 - uv.x) + 0.2 * smoothstep(0.1, 0.9, 0.6 * ValueNoise(p * 4.0) + 0.4 * ValueNoise(p * 13.0));
    return (progress - order * (1.0 - kSandLife)) / kSandLife;
}

// How much of the picture still stands at a place, with a grainy edge.
float SandLeft(vec2 uv, float progress) {
    if (progress <= 0.0) return 1.0;
    float grain = 0.12 * ValueNoise(ToHeightUnits(uv) * 160.0);
    return 1.0 - smoothstep(0.0, 0.05, SandAge(uv, progress) - grain);
}
