// SPDX-License-Identifier: GPL-3.0-or-later
// An outline of pixels, as in a game of old.
#include "edge_flow.glsl"

const float kRows = 90.0;

void main() {
    vec2 p = (floor(ToHeightUnits(vTexCoord) * kRows) + 0.5) / kRows;
    float soft = 0.0;
    for (int k = 0; k < 4; ++k) {
        soft = max(soft, Line(FromHeightUnits(p + (vec2(k & 1, k >> 1) - 0.5) * 0.5 / kRows)));
    }
    float lit = step(0.25, soft);
    int march = int(p.x * kRows + 400.0) + int(p.y * kRows + 400.0) - int(floor(global_time * 12.0));
    vec3 tint = (march & 7) < 4 ? Tone() : SecondTone();
    fragColor = Painted(tint, lit);
}
