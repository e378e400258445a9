// SPDX-License-Identifier: GPL-3.0-or-later
// Embers leave the bright parts of the clip, rise on warm air and die away.
#include "color.glsl"
#include "noise.glsl"
#include "particle.glsl"

in vec4 position;   // place in the clip, y down, and a size
in vec4 direction;
in vec3 texcoord;   // corner, and a number of the ember's own

uniform float amount;
uniform float size;       // of the largest, in heights of the frame
uniform float threshold;  // of the light that gives embers
uniform float rise;       // heights of the frame in a life
uniform float speed;

out float vHeat;  // 1 newly born, 0 dead; below 0 the clip

void main() {
    vHeat = -1.0;
    if (IsBackdrop(texcoord.xy)) return;
    float seconds = mix(1.6, 4.0, texcoord.z);
    float cycle = global_time * speed / seconds + 7.0 * texcoord.z + direction.x;
    float life = fract(cycle);
    int lives = int(floor(cycle)) * 8191 + gl_VertexID / 6;
    float luck = Hash(lives);

    vec2 from = vec2(0.5 + 0.5 * position.x, 0.5 - 0.5 * position.y);
    vec4 clip = ClipRound(from, 0.006);
    float light = smoothstep(threshold, threshold + 0.25, Luma(clip.rgb));
    vec2 place = ToHeightUnits(from);
    place.y += rise * life * (0.6 + 0.8 * luck);
    // Two slow swings that grow with the way, each ember at its own pace.
    float way = life * (0.4 + 0.6 * luck);
    float turn = 6.2831853 * (luck + life * (1.0 + 1.5 * texcoord.z));
    place += way * vec2(0.10 * sin(turn) + 0.05 * sin(2.7 * turn + 4.0), 0.03 * cos(1.9 * turn));
    place.x += 0.12 * direction.y * life;

    vHeat = 1.0 - life;
    float grain = mix(0.25, 1.0, (position.w - 0.01) / 0.15);
    float shown = smoothstep(0.0, 0.08, life) * smoothstep(0.0, 0.35, vHeat);
    float flicker = 0.7 + 0.3 * sin(global_time * (9.0 + 14.0 * luck) + 50.0 * texcoord.z);
    float side = 3.0 * size * grain * shown * flicker * light * (amount > 0.0 ? 1.0 : 0.0);
    PutSquare(place, texcoord.xy, side);
}
