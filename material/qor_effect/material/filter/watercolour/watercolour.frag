// SPDX-License-Identifier: GPL-3.0-or-later
// Pools of colour with darker rims on rough paper.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float size;  // of the pools, in heights of the frame
uniform float edges;
uniform float paper;

// The calmest of four quarters around a place: flat inside, sharp at borders.
vec3 Pool(vec2 uv, vec2 d, out float spread) {
    vec3 best = vec3(0.0);
    spread = 9.0;
    for (int q = 0; q < 4; ++q) {
        vec2 way = vec2(q & 1, q >> 1) * 2.0 - 1.0;
        vec3 sum = vec3(0.0);
        float squares = 0.0;
        for (int k = 0; k < 4; ++k) {
            vec3 c = Straight(Input0(uv + way * d * vec2(float(k & 1) + 0.35, float(k >> 1) + 0.35)));
            sum += c;
            squares += dot(c, c);
        }
        sum *= 0.25;
        float own = squares * 0.25 - dot(sum, sum);
        if (own < spread) { spread = own; best = sum; }
    }
    return best;
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 wander = (vec2(Fbm(p * 9.0), Fbm(p * 9.0 + 51.0)) - 0.5) * size * 1.6 / vec2(Aspect(), 1.0);
    vec2 d = size * 0.6 / vec2(Aspect(), 1.0);
    float spread;
    vec3 pool = Pool(vTexCoord + wander, d, spread);
    vec3 steps = floor(pool * 9.0 + 0.5) / 9.0;
    vec3 paint = mix(pool, steps, 0.45);
    paint = mix(vec3(Luma(paint)), paint, 1.25);
    paint = 1.0 - (1.0 - paint) * (0.85 + 0.25 * Fbm(p * 3.5));
    vec3 right = Straight(Input0(vTexCoord + wander + vec2(d.x, 0.0)));
    vec3 up = Straight(Input0(vTexCoord + wander + vec2(0.0, d.y)));
    float rim = length(vec2(Luma(right - pool), Luma(up - pool)));
    paint *= 1.0 - 0.55 * edges * smoothstep(0.03, 0.3, rim);
    float grain = Fbm(p * 130.0) - 0.5;
    paint += paper * (0.16 * grain + 0.04 * (1.0 - Luma(paint)));
    fragColor = Premultiplied(mix(Straight(c), paint, amount), c.a);
}
