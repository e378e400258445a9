// SPDX-License-Identifier: GPL-3.0-or-later
// A hologram of the outline: scan lines, a bar that travels, rows that slip.
#include "edge_flow.glsl"

void main() {
    float row = floor(vTexCoord.y * 120.0);
    float slip = step(0.93, Hash(ivec2(int(row / 6.0), int(global_time * 12.0)))) * 0.03;
    vec2 uv = vTexCoord + vec2(slip, 0.0);
    float lines = 0.55 + 0.45 * sin(vTexCoord.y * 753.98);
    float bar = exp(-60.0 * pow(fract(vTexCoord.y + 0.35 * global_time) - 0.5, 2.0));
    float near = Near(uv);
    vec3 light = Tone() * near * lines * (0.7 + 1.2 * bar) + Pale(Tone()) * Line(uv);
    light += SecondTone() * Line(uv + vec2(0.004, 0.0)) * 0.6;
    fragColor = Shown(light);
}
