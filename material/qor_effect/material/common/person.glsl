// SPDX-License-Identifier: GPL-3.0-or-later
// People: the first byte of the mask at slot 1 says how much of a place is one of them.
#include "blur.glsl"
#include "frame.glsl"

float Person(vec2 uv) { return texture(uInput1, uv).b; }

// The same without places that are half a person: what the network is not sure of is decided.
float FirmPerson(vec2 uv) { return clamp(3.3333333 * Person(uv) - 1.1666667, 0.0, 1.0); }

// How much of the disc round a place, in heights of the frame, is people: half of it at their edge.
float PersonAround(vec2 uv, float radius, int samples) {
    vec2 unit = vec2(1.0 / Aspect(), 1.0);
    vec2 direction = vec2(radius, 0.0);
    float sum = 0.0;
    for (int k = 0; k < min(samples, 64); ++k) {
        sum += FirmPerson(uv + DiscRadius(k, samples) * direction * unit);
        direction = kGoldenTurn * direction;
    }
    return sum / float(samples);
}

// The people without the steps that a coarse mask has at their edge.
float SmoothPerson(vec2 uv) { return smoothstep(0.35, 0.65, PersonAround(uv, 0.004, 12)); }
