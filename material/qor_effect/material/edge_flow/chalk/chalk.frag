// SPDX-License-Identifier: GPL-3.0-or-later
// A line of chalk, drawn anew eight times a second.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    int drawing = int(floor(global_time * 8.0));
    vec2 shake = 0.006 * (vec2(ValueNoise(p * 14.0 + float(drawing) * 9.0), ValueNoise(p * 14.0 - float(drawing) * 7.0)) - 0.5);
    vec2 uv = FromHeightUnits(p + shake);
    float line = smoothstep(0.15, 0.6, Line(uv) + 0.5 * Input2(uv).a);
    float grain = smoothstep(0.28, 0.62, 0.6 * ValueNoise(p * 190.0) + 0.4 * ValueNoise(p * 60.0 + float(drawing)));
    fragColor = Painted(Tone(), line * grain * glow);
}
