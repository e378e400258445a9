// SPDX-License-Identifier: GPL-3.0-or-later
// A lens that swells a place of the picture, or pinches it.
#include "frame.glsl"

uniform float amount;  // above 0 swells, below 0 pinches
uniform float radius;  // in heights of the frame
uniform float center_x;
uniform float center_y;

void main() {
    vec2 center = (vec2(center_x, center_y) - 0.5) * vec2(Aspect(), 1.0);
    vec2 p = ToHeightUnits(vTexCoord) - center;
    float r = length(p) / radius;
    float inner = r < 1.0 ? (1.0 - r * r) * (1.0 - r * r) : 0.0;
    vec2 q = p * (1.0 - 0.75 * amount * inner) + center;
    fragColor = Input0(Mirror(FromHeightUnits(q)));
}
