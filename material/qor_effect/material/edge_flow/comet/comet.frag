// SPDX-License-Identifier: GPL-3.0-or-later
// A comet that flies round the outline and draws its tail behind it.
#include "edge_flow.glsl"

void main() {
    float near = Near(vTexCoord);
    float line = Line(vTexCoord);
    float dust = 0.6 + 0.8 * ValueNoise(ToHeightUnits(vTexCoord) * 90.0 - 8.0 * global_time);
    fragColor = Shown(vec3(1.0) * line * line + mix(SecondTone(), Tone(), line) * near * dust + Tone() * line);
}
