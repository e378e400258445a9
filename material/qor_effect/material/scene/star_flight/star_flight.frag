// SPDX-License-Identifier: GPL-3.0-or-later
// A flight through the stars, behind the people.
#include "color.glsl"
#include "noise.glsl"
#include "person.glsl"

uniform float amount;
uniform float speed;    // layers of stars a second
uniform float density;
uniform float streak;   // how long the stars are drawn out
uniform float dim;      // how dark the old background gets
uniform int color;

const int kLayers = 6;
const float kTurn = 6.2831853;
const float kCells = 42.0;

// Stars of one layer: each cell of the ring of angles may have one, at a radius of its own.
vec3 Layer(vec2 p, float r, float cell, float depth, int layer) {
    int own = int(cell) + 64 * layer;
    if (Hash(own + 5000) > density) return vec3(0.0);
    float radius = mix(0.08, 1.0, Hash(own + 1000)) / depth;
    if (abs(r - 0.9 * radius) > 0.15 * radius + 0.03) return vec3(0.0);
    float angle = ((cell + 0.25 + 0.5 * Hash(own)) / kCells - 0.5) * kTurn;
    vec2 toward = vec2(cos(angle), sin(angle));
    float along = dot(p, toward) - radius;
    float across = dot(p, vec2(-toward.y, toward.x));
    float near = 0.0014 + 0.0012 / depth;
    // The tail lies towards the middle of the frame.
    along = max(along, max(-along - streak * 0.22 * radius, 0.0));
    float away = along * along + across * across;
    float light = exp(-away / (near * near)) + 0.35 * exp(-sqrt(away) / (2.5 * near));
    // Cells end before the light of their star does near the middle.
    light *= smoothstep(0.03, 0.1, r);
    return mix(vec3(1.0), UnpackColor(color), Hash(own + 2000)) * light;
}

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float person = SmoothPerson(vTexCoord);
    if (person >= 1.0) {
        fragColor = clip;
        return;
    }
    float r = length(p);
    float cell = min(floor((atan(p.y, p.x) / kTurn + 0.5) * kCells), kCells - 1.0);
    vec3 light = vec3(0.0);
    for (int i = 0; i < kLayers; ++i) {
        float way = fract(global_time * speed / float(kLayers) + float(i) / float(kLayers));
        float depth = mix(2.4, 0.35, way);
        float seen = smoothstep(0.0, 0.3, way) * smoothstep(1.0, 0.85, way);
        light += seen * Layer(p, r, cell, depth, i);
    }
    light = clamp(light, 0.0, 1.0);
    vec3 sky = clip.rgb * (1.0 - dim) + clip.a * dim * 0.05 * UnpackColor(color) * exp(-2.0 * r);
    vec4 behind = vec4(sky + light * (1.0 - sky), clip.a + max(light.r, light.b) * (1.0 - clip.a));
    fragColor = mix(clip, mix(behind, clip, person), amount);
}
