// SPDX-License-Identifier: GPL-3.0-or-later
// Flames that fly off the outline, sway, and cool from white over yellow to red.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    vec2 q = Origin(p);
    float sway = ValueNoise(q * 7.0 - vec2(0.0, 1.8 * global_time)) + 0.5 * ValueNoise(q * 17.0 - vec2(0.0, 3.0 * global_time)) - 0.75;
    float lift = 0.6 + 0.8 * ValueNoise(q * vec2(13.0, 4.0) + 5.0);
    vec4 c = Before(q - vec2(0.25 * sway, 0.3 * lift) * Seconds());
    c = Faded(c, accum_ratio - 0.08 * ValueNoise(q * 15.0 - vec2(0.0, 4.0 * global_time)));
    return c * vec4(1.0, 0.93, 0.84, 1.0);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
