// SPDX-License-Identifier: GPL-3.0-or-later
// A tube of neon round the outline that hums.
#include "edge_flow.glsl"

void main() {
    float hum = 0.9 + 0.1 * sin(60.0 * global_time) * ValueNoise(vec2(7.0 * global_time, 0.5));
    float near = Near(vTexCoord);
    vec3 light = Pale(Tone()) * min(1.2 * Line(vTexCoord) + 0.5 * near * near, 1.0) + Tone() * near;
    fragColor = Shown(light * hum);
}
