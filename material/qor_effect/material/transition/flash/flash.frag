// SPDX-License-Identifier: GPL-3.0-or-later
// A flash of light, and the picture is another.
#include "color.glsl"
#include "transition.glsl"

uniform int color;
uniform float strength;
uniform float width;  // of the flash, as a part of the transition

void main() {
    float t = Progress();
    float from = abs(2.0 * t - 1.0) / width;
    float light = strength * exp(-4.0 * from * from) * (1.0 - abs(2.0 * t - 1.0));
    vec4 clip = mix(Input0(vTexCoord), Input1(vTexCoord), smoothstep(0.35, 0.65, t) * 0.7 + 0.3 * t);
    float a = max(clip.a, min(light, 1.0));
    vec3 rgb = clip.rgb * (1.0 + 1.2 * light) + 0.75 * UnpackColor(color) * light * light;
    fragColor = Exact(vec4(min(rgb, a), a));
}
