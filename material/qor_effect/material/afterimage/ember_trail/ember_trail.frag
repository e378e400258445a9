// SPDX-License-Identifier: GPL-3.0-or-later
// Embers that the outline leaves: they rise and go out one after the other.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    vec2 q = Origin(p);
    vec2 air = vec2(ValueNoise(q * 6.0 + vec2(0.0, -0.9 * global_time)) - 0.5, 0.4);
    vec4 c = Before(q - 0.22 * air * Seconds());
    float eaten = smoothstep(0.35, 0.65, Fbm(p * 26.0 + vec2(0.0, -2.0 * global_time)));
    c = Faded(c, mix(accum_ratio - 0.22, accum_ratio, eaten));
    return c * vec4(1.0, 0.955, 0.87, 1.0);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
