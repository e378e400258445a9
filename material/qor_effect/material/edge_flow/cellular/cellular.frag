// SPDX-License-Identifier: GPL-3.0-or-later
// Living cells that light up where the outline passes.
#include "edge_flow.glsl"

void main() {
    vec2 cells = Cells(ToHeightUnits(vTexCoord) * 22.0, 2.0 * global_time);
    float wall = smoothstep(0.16, 0.02, cells.y - cells.x);
    float near = Near(vTexCoord);
    fragColor = Shown(Tone() * near * (0.25 + wall) + Pale(SecondTone()) * wall * near * near);
}
