// SPDX-License-Identifier: GPL-3.0-or-later
// Light of a ring round a body: clip in slot 0, the ring's lines in slot 1.
#include "blur.glsl"
#include "bolts.glsl"

uniform float amount;
uniform float dim;   // how dark the rest of the scene gets
uniform float glow;  // strength of the light round the ring
uniform vec4 uBound; // left, top, right, bottom of the ring, from the top
uniform int color_r, color_g, color_b;

const int kRingSamples = 64;

vec3 RingTone() { return vec3(color_r, color_g, color_b) / 255.0; }

float RingAt(vec2 uv) { return Input1(uv).a; }

// The ring spread over `radius` (heights of the frame), brought back to 0..1.
float RingNear(vec2 uv, float radius) {
    vec2 direction = vec2(radius, 0.0);
    float sum = 0.0;
    for (int k = 0; k < kRingSamples; ++k) {
        vec2 step = DiscRadius(k, kRingSamples) * direction;
        sum += RingAt(uv + step / vec2(Aspect(), 1.0)) * (1.0 - 0.8 * float(k) / float(kRingSamples));
        direction = kGoldenTurn * direction;
    }
    return 1.0 - exp(-3.0 * glow * sum * 2.0 / float(kRingSamples));
}

// How much a place lies in the ring's light: its height, and within its width.
float RingLevel(vec2 uv, float reach) {
    vec2 middle = vec2(0.5 * (uBound.x + uBound.z), 1.0 - 0.5 * (uBound.y + uBound.w));
    float across = max(0.5 * (uBound.z - uBound.x), 1e-4);
    float inside = smoothstep(1.0, 0.55, abs(uv.x - middle.x) / across);
    return inside * exp(-abs(uv.y - middle.y) / reach);
}
