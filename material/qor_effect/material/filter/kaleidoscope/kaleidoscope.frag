// SPDX-License-Identifier: GPL-3.0-or-later
// Mirrors a wedge of the picture around the centre.
#include "frame.glsl"

uniform int segments;
uniform float angle;  // degrees
uniform float spin;   // degrees a second
uniform float zoom;

const float kPi = 3.14159265;

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float turn = radians(angle + spin * global_time);
    float wedge = kPi / float(max(segments, 1));
    float a = mod(atan(p.y, p.x) + turn, 2.0 * wedge);
    a = abs(a - wedge);
    vec2 source = length(p) / zoom * vec2(cos(a), sin(a));
    // The wedge turns through the picture more slowly than the mirrors do.
    fragColor = Input0(Mirror(FromHeightUnits(Rotate(source, 0.5 * turn))));
}
