// SPDX-License-Identifier: GPL-3.0-or-later
// The outline in ink, painted by a brush that dries as it goes.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float bristle = Fbm(Rotate(p, 0.5) * vec2(120.0, 22.0));
    float soft = Input2(vTexCoord).a * 3.0 * glow + Line(vTexCoord);
    float body = smoothstep(0.30, 0.75, soft + 0.5 * (Fbm(p * 24.0) - 0.5));
    float dry = mix(1.0, smoothstep(0.30, 0.5, bristle), smoothstep(0.2, 0.8, Fbm(p * 5.0 + 3.0)));
    vec2 drops = Cells(p * 46.0, 0.0);
    float splash = smoothstep(0.16, 0.10, drops.x) * step(0.86, Hash(ivec2(floor(p * 46.0)))) * Near(vTexCoord);
    fragColor = Painted(Tone(), max(body * dry, splash));
}
