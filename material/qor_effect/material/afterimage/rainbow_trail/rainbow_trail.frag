// SPDX-License-Identifier: GPL-3.0-or-later
// A ribbon in all colours that flies off to the side.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    vec2 q = Origin(p);
    q.y -= 0.12 * sin(9.0 * q.x - 5.0 * global_time) * Seconds();
    vec4 c = Faded(Before(q), accum_ratio);
    vec3 hsv = RgbToHsv(c.rgb);
    return vec4(HsvToRgb(vec3(fract(hsv.x + 0.02 * uTicks), min(hsv.y + 0.04 * uTicks, 1.0), hsv.z)), c.a);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
