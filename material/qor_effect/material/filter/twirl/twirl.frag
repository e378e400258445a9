// SPDX-License-Identifier: GPL-3.0-or-later
// The picture is stirred about a point.
#include "frame.glsl"

uniform float angle;   // degrees in the middle
uniform float radius;  // in heights of the frame
uniform float center_x;
uniform float center_y;

void main() {
    vec2 center = (vec2(center_x, center_y) - 0.5) * vec2(Aspect(), 1.0);
    vec2 p = ToHeightUnits(vTexCoord) - center;
    float inner = max(0.0, 1.0 - length(p) / radius);
    vec2 q = Rotate(p, radians(angle) * inner * inner) + center;
    fragColor = Input0(Mirror(FromHeightUnits(q)));
}
