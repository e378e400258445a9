// SPDX-License-Identifier: GPL-3.0-or-later
// Two projections of people, which tremble to both sides, in lines of light.
#include "trail.glsl"

uniform float amount;
uniform int color;    // of one side
uniform int color1;   // of the other
uniform int randomShadow;  // 1: they tremble
uniform float shadow_x;    // how far, in heights of the frame
uniform float uShadow;     // where they are now
uniform float lines;       // over the height of the frame

void main() {
    vec4 clip = Input0(vTexCoord);
    float side = randomShadow == 1 ? uShadow : shadow_x;
    vec2 shift = vec2(0.4 * shadow_x + side, 0.0) / vec2(Aspect(), 1.0);
    float one = Trail(vTexCoord + shift).a;
    float other = Trail(vTexCoord - shift).a;
    float line = 0.5 + 0.5 * cos(6.2831853 * (vTexCoord.y * lines + 2.0 * Seconds()));
    // Lines that are finer than pixels become an even grey.
    float drawn = mix(0.5, line, clamp(uResolution.y / lines * 0.5 - 1.0, 0.0, 1.0));
    float scan = 0.45 + 0.55 * drawn;
    vec3 tone = mix(UnpackColor(color), UnpackColor(color1), other / max(one + other, 0.001));
    float light = max(one * one, other * other);
    fragColor = LightBehindPeople(clip, tone * (light * scan * amount));
}
