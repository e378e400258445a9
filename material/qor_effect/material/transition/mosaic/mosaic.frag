// SPDX-License-Identifier: GPL-3.0-or-later
// The picture falls into ever larger tiles, and the second clip comes out of them.
#include "transition.glsl"

uniform float size;  // of the largest tiles, in heights of the frame
uniform int square;  // 0: tiles have the shape of the frame
uniform float easing;

vec2 Tiled(float tile) {
    vec2 cell = square == 1 ? vec2(tile / Aspect(), tile) : vec2(tile);
    return clamp((floor((vTexCoord - 0.5) / cell) + 0.5) * cell + 0.5, 0.0, 1.0);
}

vec4 At(vec2 uv, float t) { return mix(Input0(uv), Input1(uv), smoothstep(0.3, 0.7, t)); }

void main() {
    float t = Eased(easing);
    float grown = 1.0 - abs(2.0 * t - 1.0);
    // Sizes go in steps of the square root of two, faded into each other.
    float tile = size * grown;
    float level = log2(max(tile, 1e-5) / size) * 2.0;
    float larger = exp2(ceil(level) * 0.5) * size;
    float smaller = exp2(floor(level) * 0.5) * size;
    vec4 tiles = mix(At(Tiled(smaller), t), At(Tiled(larger), t), smoothstep(0.25, 0.75, fract(level)));
    float fine = smoothstep(0.0, 0.08, grown);
    fragColor = Exact(mix(At(vTexCoord, t), tiles, fine));
}
