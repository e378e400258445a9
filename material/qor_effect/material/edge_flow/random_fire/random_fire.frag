// SPDX-License-Identifier: GPL-3.0-or-later
// Flames that change their colour as they go round.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float heat = Flames(0.13, 13.0, 0.75);
    float hue = fract(0.35 * ValueNoise(p * 2.0 + 0.6 * global_time) + 0.12 * global_time + 0.25 * p.y);
    vec3 tint = HsvToRgb(vec3(hue, 0.85, 1.0));
    fragColor = Shown(tint * heat * 1.2 + vec3(0.9) * heat * heat * heat);
}
