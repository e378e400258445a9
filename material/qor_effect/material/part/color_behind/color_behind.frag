// SPDX-License-Identifier: GPL-3.0-or-later
// One colour behind a picture.
#include "color.glsl"

uniform int color;

void main() { fragColor = Over(Input0(vTexCoord), vec4(UnpackColor(color), 1.0)); }
