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

// The clip with the colour of the old background taken out of the people's soft edge: there a pixel
// takes the colour that they have next to it. `inside` is how much of the pixel is kept.
vec4 WithoutBackground(vec2 uv, float inside) {
    vec4 clip = Input0(uv);
    if (inside <= 0.0 || inside >= 1.0) return clip;
    vec2 unit = vec2(1.0 / Aspect(), 1.0);
    vec2 direction = vec2(0.014, 0.0);
    vec4 sum = clip * 1e-3;
    float weight = 1e-3;
    for (int k = 0; k < 16; ++k) {
        vec2 at = uv + DiscRadius(k, 16) * direction * unit;
        float firm = smoothstep(0.75, 1.0, FirmPerson(at));
        sum += firm * Input0(at);
        weight += firm;
        direction = kGoldenTurn * direction;
    }
    return mix(sum / weight, clip, inside * inside);
}
