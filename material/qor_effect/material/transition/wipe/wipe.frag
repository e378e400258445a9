// SPDX-License-Identifier: GPL-3.0-or-later
// A straight edge crosses the frame.
#include "frame.glsl"
#include "progress.glsl"

uniform float angle;     // degrees; 0 moves to the right, 90 up
uniform float softness;  // of the edge, in heights of the frame

void main() {
    vec2 direction = vec2(cos(radians(angle)), sin(radians(angle)));
    float reach = 0.5 * (abs(direction.x) * Aspect() + abs(direction.y));
    float along = dot(ToHeightUnits(vTexCoord), direction);
    // The edge starts with its soft part outside the frame and ends there.
    float edge = mix(-reach - softness, reach + softness, Progress());
    float second = softness > 0.0 ? 1.0 - smoothstep(edge - softness, edge + softness, along)
                                  : step(along, edge) * step(0.000001, Progress());
    fragColor = mix(Input0(vTexCoord), Input1(vTexCoord), second);
}
