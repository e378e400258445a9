// SPDX-License-Identifier: GPL-3.0-or-later
// An arc that jumps about the outline and flickers.
#include "edge_flow.glsl"

void main() {
    float flicker = 0.55 + 0.45 * Hash(int(floor(global_time * 18.0)));
    float near = Near(vTexCoord);
    fragColor = Shown((vec3(1.0) * Line(vTexCoord) + Tone() * near + 0.5 * SecondTone() * near * near) * flicker);
}
