// SPDX-License-Identifier: GPL-3.0-or-later
// Stars that twinkle round the outline.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float near = Near(vTexCoord);
    float stars = Sparkles(p * 24.0 + vec2(0.0, -0.4 * global_time), 0.25, 5.0) +
                  0.8 * Sparkles(Rotate(p, 0.7) * 40.0, 0.35, 7.0);
    fragColor = Shown(stars * sqrt(near) * mix(Tone(), vec3(1.0), 0.5) * 2.2 + Tone() * 0.45 * near * near);
}
