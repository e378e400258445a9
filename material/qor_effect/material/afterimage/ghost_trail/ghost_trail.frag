// SPDX-License-Identifier: GPL-3.0-or-later
// Mist that stays behind, spreads and drifts away.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    vec2 q = Origin(p);
    vec2 air = vec2(Fbm(q * 3.0 + 0.3 * global_time), Fbm(q * 3.0 - 0.3 * global_time + 9.0)) - 0.5;
    q -= 0.35 * air * Seconds();
    return Faded(Spread(q, 0.006), accum_ratio);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
