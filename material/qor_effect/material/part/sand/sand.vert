// SPDX-License-Identifier: GPL-3.0-or-later
// A picture's grains leave their places, are carried off by the wind and grow thin.
#include "dot.glsl"
#include "particle.glsl"
#include "sand.glsl"

in vec2 position;   // y down
in vec2 texcoord;   // corner
in vec4 color;      // blue, green, red

uniform float uDuration;      // seconds
uniform float uParticleSize;  // thousandths of the frame's height

flat out vec4 vGrain;
flat out float vPixels;  // radius

void main() {
    vec2 uv = vec2(0.5 + 0.5 * position.x, 0.5 - 0.5 * position.y);
    float age = SandAge(uv, SandProgress(uDuration));
    vTexCoord = 0.5 * texcoord + 0.5;
    vGrain = vec4(0.0);
    vPixels = 0.0;
    gl_Position = vec4(2.0, 2.0, 0.0, 1.0);
    if (age <= 0.0 || age >= 1.0) return;
    float own = Hash(gl_VertexID / 6);
    vec2 p = ToHeightUnits(uv);
    // Gusts: a slow field that the grains ride on, and each one's own share of the wind.
    vec2 gust = vec2(ValueNoise(p * 3.0 + vec2(0.9 * age, 4.0)), ValueNoise(p * 3.0 + vec2(31.0, 0.9 * age))) - 0.5;
    vec2 eddy = vec2(ValueNoise(p * 11.0 + 2.0 * age), ValueNoise(p * 11.0 + 57.0 - 2.0 * age)) - 0.5;
    float way = age * age * (0.5 + 0.9 * own);
    p += way * (vec2(0.55, 0.16) + 0.9 * gust) + age * 0.16 * eddy;
    vGrain = vec4(color.bgr, smoothstep(0.0, 0.06, age) * (1.0 - age * age));
    float size = 0.0005 * uParticleSize * mix(1.0, 0.35, age) * (0.6 + 0.8 * own);
    vPixels = size * uResolution.y;
    PutSquare(p, texcoord, size * DotRoom(vPixels));
}
