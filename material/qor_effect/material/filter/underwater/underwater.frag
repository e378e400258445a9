// SPDX-License-Identifier: GPL-3.0-or-later
// Blue depth, swaying light, and the net of light that waves throw.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float depth;
uniform float caustics;
uniform float sway;
uniform int color;

// Bright lines between moving cells.
float Net(vec2 p, float t) {
    ivec2 home = ivec2(floor(p));
    float nearest = 2.0;
    float second = 2.0;
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            ivec2 cell = home + ivec2(x, y);
            vec2 seed = vec2(Hash(cell), Hash(cell + 57));
            vec2 point = vec2(cell) + 0.5 + 0.42 * sin(t * (0.6 + 0.5 * seed) + 6.2831853 * seed);
            float d = length(point - p);
            if (d < nearest) { second = nearest; nearest = d; }
            else second = min(second, d);
        }
    }
    return pow(1.0 - smoothstep(0.0, 0.32, second - nearest), 2.0);
}

void main() {
    float t = global_time;
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 wave = vec2(sin(5.0 * p.y + 1.3 * t) + 0.5 * sin(11.0 * p.y - 1.9 * t),
                     0.6 * sin(6.0 * p.x + 1.1 * t));
    vec4 c = Input0(Mirror(vTexCoord + amount * sway * 0.009 * wave / vec2(Aspect(), 1.0)));
    vec3 rgb = Straight(c);
    vec3 water = UnpackColor(color);
    vec3 dived = rgb * mix(vec3(1.0), vec3(0.35, 0.85, 1.0), 0.4 + 0.6 * depth);
    dived = mix(dived, water, depth * (0.35 + 0.3 * (1.0 - vTexCoord.y)));
    float net = Net(p * 5.0 + 0.25 * wave, t) * 0.65 + Net(p * 8.5 - 0.2 * wave + 9.0, 1.3 * t) * 0.35;
    dived += caustics * net * vec3(0.55, 0.8, 0.75) * (0.2 + 0.6 * Luma(rgb));
    fragColor = Premultiplied(mix(rgb, dived, amount), c.a);
}
