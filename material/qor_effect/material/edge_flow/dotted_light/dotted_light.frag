// SPDX-License-Identifier: GPL-3.0-or-later
// Bulbs on a chain, lit in turn.
#include "edge_flow.glsl"

void main() {
    float near = Near(vTexCoord);
    fragColor = Shown(Pale(Tone()) * min(1.3 * Line(vTexCoord), 1.0) + Tone() * near);
}
