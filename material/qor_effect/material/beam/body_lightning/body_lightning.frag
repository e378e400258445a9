// SPDX-License-Identifier: GPL-3.0-or-later
// Bolts that flicker on a body. Clip in slot 0, bolts in slot 1, bolts feathered in slot 2.
#include "bolts.glsl"

uniform float amount;
uniform float dim;       // how dark the rest of the scene gets
uniform float uEnhance;  // strength of the glow
uniform int color_r, color_g, color_b;

void main() {
    vec3 tone = vec3(color_r, color_g, color_b) / 255.0;
    float hot = Input1(vTexCoord).a;
    float near = uEnhance * Input2(vTexCoord).a;
    fragColor = Lit(Input0(vTexCoord), BoltLight(hot, near, mix(tone, vec3(1.0), 0.85), tone), dim, amount);
}
