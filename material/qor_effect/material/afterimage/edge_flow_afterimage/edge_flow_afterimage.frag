// SPDX-License-Identifier: GPL-3.0-or-later
// A streak round the outline stays on the eye and cools down to the second colour.
#include "afterimage.glsl"

uniform int color_r1, color_g1, color_b1;

vec4 Trail(vec2 p) {
    vec4 c = Faded(Spread(Origin(p), 0.0025), accum_ratio);
    vec3 cold = vec3(color_r1, color_g1, color_b1) / 255.0 * max(c.r, max(c.g, c.b));
    return vec4(mix(c.rgb, cold, min(0.12 * uTicks, 1.0)), c.a);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
