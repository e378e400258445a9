// SPDX-License-Identifier: GPL-3.0-or-later
// A tube of light round the people; its two colours run along it, and what is behind them goes dark.
#include "color.glsl"
#include "person.glsl"

uniform float amount;
uniform float width;  // of the tube, in heights of the frame
uniform float glow;   // strength of the light round it
uniform float dim;    // how dark the background gets
uniform float speed;  // turns of the colours in a second
uniform int color;
uniform int second_color;

const float kGlowReach = 0.055;
const float kTurn = 6.2831853;

void main() {
    vec4 clip = Input0(vTexCoord);
    float person = Person(vTexCoord);

    float around = PersonAround(vTexCoord, kGlowReach, 28);
    float tube = 0.0;
    float core = 0.0;
    if (around > 0.0 && around < 1.0) {
        // 1 on the edge, 0 as far from it as the disc reaches.
        float near = 1.0 - abs(2.0 * PersonAround(vTexCoord, 1.25 * width, 24) - 1.0);
        tube = smoothstep(0.2, 0.75, near);
        core = smoothstep(0.6, 1.0, near);
    }
    // The light falls on the people, too, but less: they stand before it.
    float halo = mix(min(2.0 * around, 1.0), 0.8 * (1.0 - around), person);
    halo = glow * halo * halo;

    vec2 p = ToHeightUnits(vTexCoord);
    float way = atan(p.y, p.x) / kTurn + 0.35 * p.y - speed * global_time;
    float blend = smoothstep(0.15, 0.85, 0.5 + 0.5 * sin(kTurn * way));
    vec3 tone = mix(UnpackColor(color), UnpackColor(second_color), blend);
    vec3 light = clamp(tone * (tube + halo) + 0.75 * core, 0.0, 1.0) * amount;

    clip.rgb *= 1.0 - dim * amount * (1.0 - person);
    float cover = max(light.r, max(light.g, light.b));
    fragColor = vec4(clip.rgb + light * (1.0 - clip.rgb), clip.a + cover * (1.0 - clip.a));
}
