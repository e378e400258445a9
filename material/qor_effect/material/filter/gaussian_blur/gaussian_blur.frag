// SPDX-License-Identifier: GPL-3.0-or-later
// Even softness of any width; borders go on as they end.
#include "pyramid.glsl"

uniform float radius;  // in heights of the frame: two standard deviations

void main() {
    fragColor = radius > 0.0 ? PyramidBlur(vTexCoord, 0.5 * radius) : Input0(vTexCoord);
}
