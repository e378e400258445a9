// SPDX-License-Identifier: GPL-3.0-or-later
// Dashes that march round the outline, as if it were to be cut out.
#include "edge_flow.glsl"

void main() {
    float line = Line(vTexCoord);
    float shadow = Input2(vTexCoord - vec2(-0.003, 0.004)).a;
    fragColor = Painted(mix(vec3(0.0), Tone(), step(0.02, line)), max(line, 0.0) + 0.9 * shadow * (1.0 - line) * glow);
}
