// SPDX-License-Identifier: GPL-3.0-or-later
// Rain in three depths, and the haze that it makes.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float speed;
uniform float angle;  // degrees from upright
uniform float reach;  // length of the nearest drops, in heights of the frame
uniform float haze;

float Layer(vec2 p, float depth, int seed) {
    float column = 46.0 * depth;
    float len = reach / depth;
    int at = int(floor(p.x * column));
    float own = Hash(ivec2(at, seed));
    float fall = global_time * speed * (1.9 + 0.5 * own) / depth + own * 17.0;
    float y = (p.y + fall) / (len * 3.0);
    float drop = Hash(ivec2(at, int(floor(y)) + seed * 71));
    float along = fract(y) * 3.0;
    float x = abs(fract(p.x * column) - 0.2 - 0.6 * drop);
    float pixel = column / uResolution.y;
    float thin = 1.0 - smoothstep(0.035, 0.035 + max(pixel, 0.05), x);
    return thin * smoothstep(0.0, 0.7, along) * (1.0 - smoothstep(0.92, 1.0, along)) * step(1.0 - 0.85 * amount, drop + 0.15);
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = Rotate(ToHeightUnits(vTexCoord), radians(angle)) + 20.0;
    float rain = 0.5 * Layer(p, 1.0, 3) + 0.38 * Layer(p, 1.7, 11) + 0.28 * Layer(p, 2.8, 29);
    vec3 rgb = Straight(c);
    vec3 wet = mix(rgb, vec3(Luma(rgb)) * vec3(0.86, 0.92, 1.0) * 0.9 + 0.06, haze * amount);
    wet += rain * vec3(0.72, 0.8, 0.9) * min(amount * 4.0, 1.0);
    fragColor = Premultiplied(wet, c.a);
}
