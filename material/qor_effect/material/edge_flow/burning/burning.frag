// SPDX-License-Identifier: GPL-3.0-or-later
// The outline glows like the rim of burning paper: embers, and sparks that rise.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float crust = Fbm(p * 16.0 + vec2(0.0, -0.4 * global_time));
    float heat = Near(vTexCoord) * smoothstep(0.25, 0.75, crust + 0.35 * Line(vTexCoord));
    vec2 drift = vec2(0.05 * sin(3.0 * p.y + 2.0 * global_time), -0.22 * global_time);
    float spark = Sparkles((p + drift) * 26.0, 0.72, 6.0);
    float below = Near(FromHeightUnits(p - vec2(0.0, 0.05))) + Near(FromHeightUnits(p - vec2(0.0, 0.11)));
    fragColor = Shown(FireColor(heat) + vec3(1.0, 0.6, 0.2) * spark * below);
}
