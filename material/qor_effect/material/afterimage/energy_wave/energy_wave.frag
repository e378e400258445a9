// SPDX-License-Identifier: GPL-3.0-or-later
// Rings of energy leave the outline, grow and go out.
#include "afterimage.glsl"

uniform float spread;  // growth in a second

vec4 Trail(vec2 p) {
    vec4 c = Faded(Before(Origin(p) * (1.0 - spread * Seconds())), accum_ratio);
    return c * vec4(1.0, 0.97, 0.95, 1.0);
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
