// SPDX-License-Identifier: GPL-3.0-or-later
// The outline beats like a heart.
#include "edge_flow.glsl"

void main() {
    float t = fract(1.15 * global_time);
    float beat = exp(-40.0 * (t - 0.12) * (t - 0.12)) + 0.6 * exp(-60.0 * (t - 0.38) * (t - 0.38));
    float reach = 0.35 + 1.3 * beat;
    float near = 1.0 - exp(-5.0 * glow * reach * Input2(vTexCoord).a);
    fragColor = Shown(Pale(Tone()) * Line(vTexCoord) * (0.5 + 0.5 * beat) + Tone() * near * reach);
}
