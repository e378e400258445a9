// SPDX-License-Identifier: GPL-3.0-or-later
// Prints of the outline that move away to both sides.
#include "afterimage.glsl"

vec4 Trail(vec2 p) { return Faded(Before(Origin(p)), accum_ratio); }

void main() { fragColor = uAccum == 1 ? Printed(Trail(ToHeightUnits(vTexCoord))) : Shown(); }
