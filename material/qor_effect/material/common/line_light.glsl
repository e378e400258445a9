// SPDX-License-Identifier: GPL-3.0-or-later
// A tube of light over a clip: lines in slot 1, feathered in slot 2. The feather spreads a thin line over
// much room: what is left of it is brought back.
#include "bolts.glsl"

uniform float amount;
uniform float dim;   // how dark the rest of the scene gets
uniform float glow;  // strength of the light round the lines
uniform float hum;   // how restless the light is
uniform int color_r, color_g, color_b;

vec4 LineLight() {
    vec3 tone = vec3(color_r, color_g, color_b) / 255.0;
    float unrest = 1.0 - hum * ValueNoise(vec2(11.0 * global_time, 0.5)) *
                             ValueNoise(6.0 * ToHeightUnits(vTexCoord) + 3.0 * global_time);
    vec3 light = BoltLight(Input1(vTexCoord).a, glow * Input2(vTexCoord).a, mix(tone, vec3(1.0), 0.75), tone);
    return Lit(Input0(vTexCoord), light * unrest, dim, amount);
}
