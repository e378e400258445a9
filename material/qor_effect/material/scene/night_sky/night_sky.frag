// SPDX-License-Identifier: GPL-3.0-or-later
// A starry night with a milky way behind the people; the sky turns slowly about a pole above the frame.
#include "color.glsl"
#include "noise.glsl"
#include "person.glsl"

uniform float amount;
uniform float density;
uniform float twinkle;
uniform float milky_way;
uniform float turn;  // degrees a second
uniform float dim;   // how dark the old background gets
uniform int color;

// One star in a cell at most, rounder and rarer the larger it is.
vec3 Stars(vec2 p, float cells, float share, int seed) {
    vec2 at = p * cells;
    ivec2 cell = ivec2(floor(at));
    float own = Hash(ivec3(cell, seed));
    if (own > share) return vec3(0.0);
    vec2 place = 0.25 + 0.5 * vec2(Hash(ivec3(cell, seed + 1)), Hash(ivec3(cell, seed + 2)));
    float r = length(fract(at) - place);
    float radius = mix(0.035, 0.09, Hash(ivec3(cell, seed + 3)));
    float rhythm = sin(global_time * (2.0 + 3.0 * own / max(share, 1e-3)) + 40.0 * Hash(ivec3(cell, seed + 4)));
    float bright = 1.0 - twinkle * (0.5 + 0.5 * rhythm) * 0.8;
    vec3 tone = mix(vec3(1.0, 0.9, 0.78), vec3(0.78, 0.88, 1.0), Hash(ivec3(cell, seed + 5)));
    return tone * bright * (exp(-r * r / (radius * radius)) + 0.2 * exp(-r / radius) * smoothstep(0.25, 0.1, r));
}

void main() {
    vec4 clip = Input0(vTexCoord);
    float person = SmoothPerson(vTexCoord);
    if (person >= 1.0) {
        fragColor = clip;
        return;
    }
    vec2 p = Rotate(ToHeightUnits(vTexCoord) - vec2(0.1, 0.9), radians(turn) * global_time) + vec2(7.0);
    float band = dot(p - vec2(7.0, 6.3), normalize(vec2(0.55, 0.83)));
    float milk = milky_way * exp(-7.0 * band * band);
    if (milk > 0.01) milk *= smoothstep(0.25, 0.85, Fbm(p * 3.0 + 2.0 * ValueNoise(p * 2.0)));
    vec3 sky = UnpackColor(color);
    vec3 light = sky * (0.1 + 0.1 * (1.0 - vTexCoord.y)) + mix(sky, vec3(1.0, 0.85, 0.95), 0.5) * milk * 0.55;
    light += Stars(p, 14.0, 0.45 * density, 10);
    light += 0.8 * Stars(p, 34.0, (0.4 + 0.3 * milk) * density, 20);
    light += 0.5 * Stars(p, 70.0, (0.35 + 0.6 * milk) * density, 30);
    light = clamp(light, 0.0, 1.0);
    vec3 dark = clip.rgb * (1.0 - dim);
    vec4 behind = vec4(dark + light * (1.0 - dark), clip.a + light.b * (1.0 - clip.a));
    fragColor = mix(clip, mix(behind, clip, person), amount);
}
