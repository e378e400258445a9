// SPDX-License-Identifier: GPL-3.0-or-later
// A soft aura round everybody in the picture that breathes.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float breath = 0.8 + 0.2 * sin(2.2 * global_time);
    float near = 1.0 - exp(-9.0 * glow * breath * Input2(vTexCoord).a);
    float veil = 0.7 + 0.6 * (Fbm(p * 4.0 + vec2(0.2, -0.3) * global_time) - 0.5);
    vec3 tone = mix(SecondTone(), Tone(), smoothstep(0.1, 0.9, near));
    fragColor = Shown(tone * near * veil + 0.4 * Pale(Tone()) * near * near * near);
}
