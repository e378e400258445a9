// SPDX-License-Identifier: GPL-3.0-or-later
// Every arc leaves a ghost that is torn apart.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    float now = floor(12.5 * global_time);
    vec2 tear = vec2(ValueNoise(p * 14.0 + now), ValueNoise(p * 14.0 - now)) - 0.5;
    vec4 c = Faded(Before(Origin(p) - 0.25 * tear * Seconds()), accum_ratio);
    return c * vec4(0.93, 0.9, 1.0, 1.0);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
