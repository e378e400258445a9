// SPDX-License-Identifier: GPL-3.0-or-later
// A ring rises along a body and lights what it passes.
#include "body_ring.glsl"

void main() {
    vec3 tone = RingTone();
    vec4 clip = Input0(vTexCoord);
    float near = RingNear(vTexCoord, 0.026);
    float level = RingLevel(vTexCoord, 0.045);
    float lines = 0.75 + 0.25 * sin(vTexCoord.y * 520.0);
    vec3 light = BoltLight(RingAt(vTexCoord), 0.4 * near, mix(tone, vec3(1.0), 0.75), tone);
    light += tone * level * lines * (0.25 + 0.75 * Luma(clip.rgb)) * 0.8;
    fragColor = Lit(clip, light, dim, amount);
}
