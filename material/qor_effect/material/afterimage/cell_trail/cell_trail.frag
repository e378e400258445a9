// SPDX-License-Identifier: GPL-3.0-or-later
// The trail goes out cell by cell, like windows in the night.
#include "afterimage.glsl"

// The middle of the honeycomb cell of a place, cells of size 1.
vec2 Cell(vec2 p) {
    const vec2 kStep = vec2(1.0, 1.7320508);
    vec2 a = (floor(p / kStep) + 0.5) * kStep;
    vec2 b = (floor(p / kStep - 0.5) + 1.0) * kStep;
    return distance(p, a) < distance(p, b) ? a : b;
}

vec4 Trail(vec2 p) {
    const float kCells = 34.0;  // in a height of the frame
    vec2 cell = Cell(p * kCells);
    float luck = Hash(ivec2(floor(cell * 4.0)));
    vec4 c = Faded(Before(Origin(p)), accum_ratio - 0.12 * luck);
    vec4 own = Input1(FromHeightUnits(cell / kCells));
    float wall = smoothstep(0.5, 0.4, distance(p * kCells, cell));
    return max(c, own * wall * (0.5 + 0.5 * luck));
}

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
