// SPDX-License-Identifier: GPL-3.0-or-later
// Dots grow across the frame until they close.
#include "transition.glsl"

uniform int count;     // a height of the frame
uniform float angle;   // degrees; where the dots begin to grow: 0 left, 90 bottom
uniform float spread;  // how late the last one grows
uniform float easing;

void main() {
    float dots = float(clamp(count, 2, 40));
    vec2 direction = vec2(cos(radians(angle)), sin(radians(angle)));
    float reach = 0.5 * (abs(direction.x) * Aspect() + abs(direction.y));
    vec2 p = ToHeightUnits(vTexCoord) * dots;
    float open = 0.0;
    // Every second row is shifted; a dot may reach into its neighbours.
    for (int y = -1; y <= 1; ++y) {
        float row = floor(p.y) + float(y);
        float shift = 0.5 * mod(row, 2.0);
        for (int x = -1; x <= 1; ++x) {
            vec2 center = vec2(floor(p.x - shift) + float(x) + 0.5 + shift, row + 0.5);
            float late = (dot(center / dots, direction) / reach * 0.5 + 0.5) * spread;
            float t = clamp((Eased(easing) - clamp(late, 0.0, spread)) / (1.0 - spread), 0.0, 1.0);
            open = max(open, Cover((length(p - center) - 0.68 * t) / dots, 0.0) * step(1e-4, t));
        }
    }
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), open));
}
