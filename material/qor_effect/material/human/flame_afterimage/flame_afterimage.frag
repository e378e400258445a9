// SPDX-License-Identifier: GPL-3.0-or-later
// Flames of the shapes that people leave behind.
#include "flame.glsl"
#include "trail.glsl"

uniform float amount;
uniform int color;    // of the flames' edge
uniform int color1;   // of their heart
uniform int showSrc;  // 0: the flames alone

void main() {
    vec4 clip = showSrc == 1 ? Input0(vTexCoord) : vec4(0.0);
    vec2 p = ToHeightUnits(vTexCoord);
    float near = Trail(vTexCoord).a + Trail(FromHeightUnits(p - vec2(0.0, 0.07))).a;
    if (near <= 0.0) {
        fragColor = clip;
        return;
    }
    vec2 uv = FromHeightUnits(p + FlamePush(p, Seconds(), 1.2 - Trail(vTexCoord).a));
    vec4 fire = FlameColor(smoothstep(0.0, 1.1, Trail(uv).a * FlameTongues(p, Seconds())), UnpackColor(color), UnpackColor(color1)) * amount;
    fragColor = showSrc == 1 ? LightBehindPeople(clip, fire.rgb) : fire;
}
