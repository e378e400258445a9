// SPDX-License-Identifier: GPL-3.0-or-later
// Lines as their owner gives them, or shaken off their way.
#include "noise.glsl"

uniform float uTime;         // ticks
uniform float uWobble;       // how far lines leave their way, heights of the frame
uniform float uWobbleScale;  // turns along a height of the frame
uniform float uWobbleSpeed;  // new ways a second

// Noise by the place, so that lines which meet go on meeting.
vec2 Bend(vec2 p, float progress) {
    if (uWobble <= 0.0) return p;
    float time = uWobbleSpeed * uTime / 25.0;
    float phase = fract(time);
    vec2 q = p * uWobbleScale + 31.0 * floor(time);
    vec2 now = vec2(ValueNoise(q), ValueNoise(q + 113.0));
    vec2 next = vec2(ValueNoise(q + 31.0), ValueNoise(q + 144.0));
    return p + 2.0 * uWobble * (mix(now, next, phase) - 0.5);
}

#include "beam_line_steps.glsl"
