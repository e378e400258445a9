// SPDX-License-Identifier: GPL-3.0-or-later
// Glittering dust hovers in slow whirls; each grain flashes when its moment comes.
#include "color.glsl"
#include "particle.glsl"

in vec4 position;   // place in the clip, y down, and a size
in vec4 direction;
in vec3 texcoord;   // corner, and a number of the grain's own

uniform float amount;
uniform float size;     // of the largest star, in heights of the frame
uniform float drift;
uniform float twinkle;  // flashes in four seconds or so

flat out vec4 vGrain;  // the clip's colour at its place, straight; how bright it is, below 0 the clip

void main() {
    vGrain = vec4(0.0, 0.0, 0.0, -1.0);
    if (IsBackdrop(texcoord.xy)) return;
    float own = texcoord.z;
    float pace = 0.25 + 0.5 * own;
    vec2 sway = vec2(sin(global_time * pace + 40.0 * own), cos(global_time * pace * 0.8 + 23.0 * direction.x));
    vec2 uv = vec2(0.5 + 0.5 * position.x, 0.5 - 0.5 * position.y);
    vec2 place = ToHeightUnits(uv) + drift * (0.14 * sway + 0.05 * direction.xy * sin(global_time * 0.9 + 9.0 * own));
    // Dust is lit where the clip is.
    vec4 clip = ClipRound(FromHeightUnits(place), 0.006);
    float phase = fract(global_time * twinkle * (0.16 + 0.2 * own) + 13.0 * own + direction.z);
    float flash = exp(-30.0 * (phase - 0.5) * (phase - 0.5));
    float grain = mix(0.3, 1.0, pow((position.w - 0.01) / 0.15, 2.0));
    vGrain = vec4(Straight(clip), flash * (0.25 + 0.75 * smoothstep(0.05, 0.5, Luma(clip.rgb))));
    float shown = (amount > 0.0 ? 1.0 : 0.0) * (clip.a > 0.0 ? 1.0 : 0.0);
    PutSquare(place, texcoord.xy, size * grain * (0.4 + 0.6 * flash) * shown);
}
