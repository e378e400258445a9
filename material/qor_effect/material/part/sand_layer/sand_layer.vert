// SPDX-License-Identifier: GPL-3.0-or-later
// Sand is torn off a picture and races away to the right in gusts.
#include "color.glsl"
#include "noise.glsl"
#include "particle.glsl"

in vec4 position;   // place in the clip, y down, and a size
in vec4 direction;
in vec3 texcoord;   // corner, and a number of the grain's own

uniform float size;  // of the largest grain, in heights of the frame
uniform float speed;
uniform int color;
uniform float uTimeDifference;  // seconds that this layer is ahead

flat out vec4 vGrain;
out vec2 vAlong;  // place in the grain, -1..1, x along its way

void main() {
    float now = global_time + uTimeDifference;
    float own = texcoord.z;
    float cycle = now * speed / mix(0.7, 1.9, own) + 11.0 * own + direction.x;
    float life = fract(cycle);
    float luck = Hash(int(floor(cycle)) * 8191 + gl_VertexID / 6);
    vec2 uv = vec2(0.5 + 0.5 * position.x, 0.5 - 0.5 * position.y);
    vec2 p = ToHeightUnits(uv);
    vec4 clip = ClipRound(uv, 0.006);
    float wave = sin(6.0 * p.y + 2.5 * life + 1.3 * direction.z) * 0.05 + 0.10 * (ValueNoise(p * 5.0 + 3.0 * life) - 0.5);
    vec2 way = vec2((0.35 + 0.65 * luck) * life * (0.4 + 0.6 * life), wave * life + 0.07 * direction.y * life);
    p += way;
    float fade = smoothstep(0.0, 0.12, life) * smoothstep(1.0, 0.5, life);
    vec3 tone = mix(UnpackColor(color), Straight(clip), 0.4) * (0.75 + 0.4 * luck);
    vGrain = vec4(tone, fade * clip.a);
    vAlong = texcoord.xy;
    float side = size * mix(0.3, 1.0, (position.w - 0.01) / 0.15);
    vTexCoord = 0.5 * texcoord.xy + 0.5;
    // Longer along the way, as moving grains are seen.
    gl_Position = vec4(2.0 * (p + texcoord.xy * side * vec2(1.0 + 3.0 * life, 0.5)) / vec2(Aspect(), 1.0), 0.0, 1.0);
}
