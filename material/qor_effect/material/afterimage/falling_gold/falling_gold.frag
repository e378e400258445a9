// SPDX-License-Identifier: GPL-3.0-or-later
// Gold that falls off the outline in threads and glitters.
#include "afterimage.glsl"

vec4 Trail(vec2 p) {
    float column = floor(p.x * 90.0);
    float pace = 0.5 + Hash(int(column));
    vec4 c = Before(Origin(p) + vec2(0.0, 0.22 * pace * Seconds()));
    float glitter = 0.86 + 0.28 * Hash(ivec3(floor(p * 240.0), int(12.5 * global_time)));
    return Faded(c, accum_ratio) * vec4(vec3(pow(min(glitter, 1.04), uTicks)), 1.0);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
