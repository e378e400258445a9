// SPDX-License-Identifier: GPL-3.0-or-later
// A memory: the picture arrives blurred; its light spreads, its colours pale, haze drifts. Slot 1 is the haze.
#include "color.glsl"
#include "frame.glsl"

uniform int strength;

void main() {
    float s = float(strength) / 100.0;
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 pale = mix(rgb, vec3(Luma(rgb)), 0.25) * vec3(1.04, 0.98, 0.94) + vec3(0.05, 0.03, 0.06);
    rgb = mix(rgb, Screen(pale * 0.9, pale * pale * 0.45), s);
    vec3 haze = Input1(vTexCoord).rgb;
    rgb = Screen(rgb, haze * 0.75 * s);
    float rim = smoothstep(0.35, 1.0, length(ToHeightUnits(vTexCoord)));
    rgb = mix(rgb, vec3(1.0, 0.96, 0.92), 0.45 * s * rim);
    fragColor = Premultiplied(rgb, c.a);
}
