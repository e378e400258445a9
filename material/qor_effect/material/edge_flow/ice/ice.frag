// SPDX-License-Identifier: GPL-3.0-or-later
// Ice grows along the outline in splinters.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 big = Cells(p * 15.0, 1.0);
    vec2 small = Cells(p * 34.0 + 4.0, 2.0);
    float splinter = smoothstep(0.10, 0.0, big.y - big.x) + 0.7 * smoothstep(0.12, 0.0, small.y - small.x);
    float near = Near(vTexCoord);
    float frozen = smoothstep(0.25, 0.55, near + 0.35 * (Fbm(p * 12.0) - 0.5) + 0.25 * (0.5 - big.x));
    float shimmer = 0.75 + 0.25 * sin(3.0 * global_time + 30.0 * big.x);
    vec3 ice = mix(vec3(0.25, 0.55, 0.85), vec3(0.9, 0.98, 1.0), clamp(splinter, 0.0, 1.0));
    vec4 body = Painted(ice * Tone() * shimmer, 0.75 * frozen);
    vec3 spark = vec3(1.0) * (Line(vTexCoord) + 0.8 * splinter * frozen * Sparkles(p * 30.0, 0.6, 3.0));
    body.rgb += spark * amount * max(body.a - body.rgb, 0.0);
    fragColor = body;
}
