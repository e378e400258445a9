// SPDX-License-Identifier: GPL-3.0-or-later
// The picture is split along a line, and both halves move away from it.
#include "transition.glsl"

uniform float angle;     // degrees of the line: 90 upright, 0 level
uniform float softness;  // in heights of the frame
uniform int closing;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 across = vec2(-sin(radians(angle)), cos(radians(angle)));
    float reach = 0.5 * (abs(across.x) * Aspect() + abs(across.y));
    float from = abs(dot(ToHeightUnits(vTexCoord), across));
    float edge = mix(-softness, reach + softness, closing == 1 ? 1.0 - t : t);
    float inner = Cover(from - edge, softness);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), closing == 1 ? 1.0 - inner : inner));
}
