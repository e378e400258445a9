// SPDX-License-Identifier: GPL-3.0-or-later
// Neon lines run away from people, each of which is their outline of a moment ago.
#include "trail.glsl"

uniform float amount;
uniform int color;   // of the nearest
uniform int color1;  // of the furthest
uniform int rings;
uniform float dim;   // how dark the background gets

const float kWidth = 0.0028;  // of a line, in heights of the frame
const float kHalo = 0.016;

void main() {
    vec4 clip = Input0(vTexCoord);
    // The trail goes down in steps, one a tick: seen through a small disc it is a
    // slope. Clamped reads: the border of the frame is no edge.
    vec2 reach = 0.012 / vec2(Aspect(), 1.0);
    float right = Input1(vTexCoord + vec2(reach.x, 0.0)).a;
    float left = Input1(vTexCoord - vec2(reach.x, 0.0)).a;
    float up = Input1(vTexCoord + vec2(0.0, reach.y)).a;
    float down = Input1(vTexCoord - vec2(0.0, reach.y)).a;
    float fresh = (2.0 * Trail(vTexCoord).a + right + left + up + down) / 6.0;
    float slope = length(vec2(right - left, up - down)) / (2.0 * 0.012);
    float steep = max(slope, 0.6);
    // Lines stand still on the people's past shapes; the distance to the nearest one in heights.
    float place = fresh * float(rings);
    float away = abs(fract(place) - 0.5) / float(rings) / steep;
    float line = 1.0 - smoothstep(kWidth * 0.5, kWidth, away);
    float halo = exp(-away * away / (kHalo * kHalo)) * 0.55;
    float seen = smoothstep(0.02, 0.1, fresh) * (1.0 - smoothstep(0.97, 1.0, fresh)) * mix(0.35, 1.0, fresh) * smoothstep(0.15, 0.9, slope);
    vec3 tone = mix(UnpackColor(color1), UnpackColor(color), fresh);
    vec3 light = clamp(tone * (line + halo) + 0.6 * line, 0.0, 1.0) * seen * amount;
    clip.rgb *= 1.0 - dim * amount * (1.0 - PersonNow(vTexCoord));
    fragColor = LightBehindPeople(clip, light);
}
