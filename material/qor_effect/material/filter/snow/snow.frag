// SPDX-License-Identifier: GPL-3.0-or-later
// Flakes of several depths drift down; near ones are soft and large.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float size;
uniform float speed;
uniform float wind;

const int kLayers = 6;

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float snow = 0.0;
    for (int k = 0; k < kLayers; ++k) {
        float depth = 3.0 + 3.4 * float(k);
        float t = global_time * speed;
        vec2 q = p * depth + vec2(-wind * t * 2.2 + 13.0 * float(k) + 50.0, t * 1.15 + 7.0 * float(k) + 50.0);
        ivec2 cell = ivec2(floor(q));
        float own = Hash(ivec3(cell, k));
        vec2 sway = 0.16 * vec2(sin(t * (0.8 + own) + 6.28 * own), 0.0);
        vec2 middle = 0.3 + 0.4 * vec2(Hash(ivec3(cell, k + 20)), Hash(ivec3(cell, k + 40))) + sway;
        float radius = 0.1 * size * (0.5 + own);
        float soft = max(0.6 * radius, 1.5 * depth / uResolution.y);
        float flake = 1.0 - smoothstep(radius - soft, radius + soft, length(fract(q) - middle));
        snow = max(snow, flake * step(own, amount * 0.9) * (0.55 + 0.4 / (1.0 + 0.4 * float(k))));
    }
    vec3 rgb = Straight(c);
    rgb = mix(rgb, mix(rgb, vec3(0.85, 0.9, 0.98), 0.1), amount);
    fragColor = Premultiplied(mix(rgb, vec3(0.97, 0.98, 1.0), snow), max(c.a, 0.0));
}
