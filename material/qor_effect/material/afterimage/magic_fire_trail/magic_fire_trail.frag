// SPDX-License-Identifier: GPL-3.0-or-later
// Coloured flames that curl up in whirls.
#include "afterimage.glsl"

// A stream without sources: it whirls and carries nothing away for good.
vec2 Whirl(vec2 p) {
    const float kStep = 0.02;
    vec2 q = p * 3.5 + vec2(0.0, -0.5 * global_time);
    float here = ValueNoise(q);
    return vec2(ValueNoise(q + vec2(0.0, kStep)) - here, here - ValueNoise(q + vec2(kStep, 0.0))) / kStep;
}

vec4 Trail(vec2 p) {
    vec2 q = Origin(p);
    vec4 c = Faded(Before(q - 0.16 * Whirl(q) * Seconds()), accum_ratio);
    vec3 hsv = RgbToHsv(c.rgb);
    return vec4(HsvToRgb(vec3(fract(hsv.x + 0.012 * uTicks), min(hsv.y + 0.05 * uTicks, 1.0), hsv.z)), c.a);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
