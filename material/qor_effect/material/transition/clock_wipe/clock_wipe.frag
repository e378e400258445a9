// SPDX-License-Identifier: GPL-3.0-or-later
// A hand runs around the centre and uncovers the second clip.
#include "frame.glsl"
#include "progress.glsl"

uniform float start;     // degrees from the top, clockwise
uniform float softness;  // of the edge, as a part of the turn

void main() {
    vec2 p = Rotate(ToHeightUnits(vTexCoord), radians(start));
    float turn = fract(atan(p.x, p.y) / 6.2831853 + 1.0);  // 0 at the top, growing clockwise
    float edge = mix(-softness, 1.0 + softness, Progress());
    float second = softness > 0.0 ? 1.0 - smoothstep(edge - softness, edge + softness, turn)
                                  : step(turn, edge) * step(0.000001, Progress());
    fragColor = mix(Input0(vTexCoord), Input1(vTexCoord), second);
}
