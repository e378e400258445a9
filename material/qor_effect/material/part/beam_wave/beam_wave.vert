// SPDX-License-Identifier: GPL-3.0-or-later
// Lines that swing up and down like a string that sounds, and run along themselves.
uniform float uSinRadius;  // how far, heights of the frame
uniform int uSinCount;     // waves on the whole path
uniform float uTime;       // ticks

vec2 Bend(vec2 p, float progress) {
    float phase = 6.2831853 * float(uSinCount) * progress - 0.3 * uTime;
    // Whole waves, so that the path still meets itself; a slower one gives the fast one its swell.
    float swell = 0.65 + 0.35 * sin(12.5663706 * progress + 0.11 * uTime);
    return p + vec2(0.0, uSinRadius * swell * sin(phase));
}

#include "beam_line_steps.glsl"
