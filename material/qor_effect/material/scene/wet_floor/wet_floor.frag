// SPDX-License-Identifier: GPL-3.0-or-later
// The clip stands on a dark floor that mirrors it, sharp at its foot and softer farther down. Slots:
// clip, mirrored clip, that feathered, and once more.
#include "noise.glsl"
#include "reflection.glsl"

uniform float amount;
uniform float shine;
uniform float materialID;  // 0 polished stone, 1 wet asphalt, 2 brushed metal
uniform int calLayer;

// How rough the floor is at a place, 0..1.
float Rough(vec2 p, float depth) {
    vec2 q = vec2(p.x, -depth) / (0.25 + 1.6 * depth);  // as a floor that comes nearer
    if (materialID < 0.5) return 0.12 + 0.2 * depth;
    if (materialID < 1.5) return smoothstep(0.35, 0.75, Fbm(3.0 * q)) + 0.3 * depth;  // puddles
    return 0.35 + 0.45 * ValueNoise(vec2(2.0 * q.x, 130.0 * q.y));
}

void main() {
    if (calLayer == 1) {
        fragColor = Input0(Mirrored(vTexCoord, baseLine));
        return;
    }
    vec4 clip = Input0(vTexCoord);
    float beneath = amount * Beneath(vTexCoord, baseLine);
    fragColor = clip;
    if (beneath <= 0.0) return;
    float depth = max(Below(vTexCoord, baseLine), 0.0);
    float away = clamp(depth / FloorDepth(), 0.0, 1.0);
    float rough = clamp(Rough(ToHeightUnits(vTexCoord), depth), 0.0, 1.0);
    float soft = clamp(1.6 * away + rough * smoothstep(0.0, 0.06, depth), 0.0, 2.0);
    vec4 seen = soft < 1.0 ? mix(Input1(vTexCoord), Input2(vTexCoord), soft)
                           : mix(Input2(vTexCoord), Input3(vTexCoord), soft - 1.0);
    // Flat rays mirror more.
    float mirror = shine * mix(0.95, 0.35, sqrt(away)) * (1.0 - 0.45 * rough);
    vec3 ground = Tint() * (0.75 + 0.4 * (1.0 - rough));
    vec4 floor_ = mix(vec4(ground, 1.0) * clip.a, seen, mirror);
    fragColor = mix(clip, floor_, beneath);
}
