// SPDX-License-Identifier: GPL-3.0-or-later
// All colours that follow each other round the outline.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float hue = fract(atan(p.y, p.x) / 6.2831853 + 0.6 * length(p) - 0.4 * global_time);
    vec3 tint = HsvToRgb(vec3(hue, 0.9, 1.0));
    float near = Near(vTexCoord);
    fragColor = Shown(mix(tint, vec3(1.0), 0.6) * min(Line(vTexCoord) + 0.3 * near * near, 1.0) + tint * near);
}
