// SPDX-License-Identifier: GPL-3.0-or-later
// Two bolts between the ends of what is bright, whose edges take on their light.
#include "hand_bolts.glsl"

uniform int calLayer;  // 0 lays the bolts together, 1 shows them
uniform float edge;    // how much light runs along the bright shape

const float kEdgeReach = 0.004;  // heights of the frame

// 1 on the rim of what is bright (slot 3), 0 away from it.
float Rim() {
    vec2 reach = kEdgeReach * vec2(1.0 / Aspect(), 1.0);
    float here = Input3(vTexCoord).r;
    float around = 0.0;
    for (int i = 0; i < 8; ++i) {
        float angle = 0.7853982 * float(i);
        around += Input3(vTexCoord + reach * vec2(cos(angle), sin(angle))).r;
    }
    return min(2.0 * abs(here - around / 8.0), 1.0);
}

void main() {
    if (calLayer == 0) {
        fragColor = BoltLayer();
        return;
    }
    vec2 p = ToHeightUnits(vTexCoord);
    float crackle = smoothstep(0.35, 0.75, Fbm(7.0 * p + vec2(0.0, 5.0 * global_time)));
    fragColor = BoltsOverClip(edge * Rim() * crackle * (GlowColor() + 0.4 * CoreColor()));
}
