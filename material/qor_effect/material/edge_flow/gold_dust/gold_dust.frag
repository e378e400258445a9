// SPDX-License-Identifier: GPL-3.0-or-later
// Gold that trickles off the outline.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float fall = 0.0;
    for (int k = 0; k < 5; ++k) {
        float down = float(k) * 0.035;
        fall += Near(FromHeightUnits(p + vec2(0.0, down))) * (1.0 - float(k) / 5.0);
    }
    vec2 q = (p + vec2(0.01 * sin(9.0 * p.y), 0.13 * global_time));
    float dust = Sparkles(q * 38.0, 0.2, 8.0) + 0.8 * Sparkles(q * 60.0 + 3.0, 0.3, 9.0);
    vec3 gold = mix(vec3(1.0, 0.62, 0.16), vec3(1.0, 0.93, 0.66), ValueNoise(p * 40.0 + global_time));
    fragColor = Shown(gold * (2.0 * dust * fall + 0.3 * Near(vTexCoord) + Line(vTexCoord) * (0.4 + 0.6 * ValueNoise(p * 70.0))));
}
