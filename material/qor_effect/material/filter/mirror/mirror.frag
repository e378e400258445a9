// SPDX-License-Identifier: GPL-3.0-or-later
// One side of the picture is the mirror of the other; or all four quarters are.
#include "frame.glsl"

uniform int mode;        // 0 left to right, 1 right to left, 2 top to bottom, 3 bottom to top, 4 four-way
uniform float position;  // of the mirror; 0.5 the middle

void main() {
    vec2 uv = vTexCoord;
    if (mode == 0 || mode == 4) uv.x = uv.x > position ? 2.0 * position - uv.x : uv.x;
    if (mode == 1) uv.x = uv.x < position ? 2.0 * position - uv.x : uv.x;
    if (mode == 2 || mode == 4) uv.y = uv.y < 1.0 - position ? 2.0 * (1.0 - position) - uv.y : uv.y;
    if (mode == 3) uv.y = uv.y > 1.0 - position ? 2.0 * (1.0 - position) - uv.y : uv.y;
    fragColor = Input0(Mirror(uv));
}
