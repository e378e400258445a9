// SPDX-License-Identifier: GPL-3.0-or-later
// Mist that rises from the outline and drifts away.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float mist = 0.0;
    for (int k = 0; k < 5; ++k) {
        float up = float(k) * 0.03;
        vec2 sway = 0.09 * (vec2(Fbm(p * 3.0 + vec2(0.25 * global_time, up)), Fbm(p * 3.0 + 9.0 - 0.2 * global_time)) - 0.5);
        mist += Near(FromHeightUnits(p + sway - vec2(0.0, up))) * (1.0 - float(k) / 6.0);
    }
    float wisp = smoothstep(0.2, 0.8, Fbm(p * 5.0 + vec2(0.1, -0.35) * global_time));
    fragColor = Shown(Tone() * (1.0 - exp(-0.55 * mist * (0.3 + wisp))));
}
