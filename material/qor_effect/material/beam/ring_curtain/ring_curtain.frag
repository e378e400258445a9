// SPDX-License-Identifier: GPL-3.0-or-later
// A ring that rises and draws a curtain of light behind it, like a beam that fetches somebody.
#include "body_ring.glsl"

const int kCurtain = 28;

void main() {
    vec3 tone = RingTone();
    // Where the ring was: the column above this place, weaker with its height.
    float curtain = 0.0;
    float column = ValueNoise(vec2(vTexCoord.x * Aspect() * 70.0, 3.0 * global_time));
    for (int k = 1; k <= kCurtain; ++k) {
        float up = 0.26 * float(k) / float(kCurtain);
        curtain = max(curtain, RingAt(vTexCoord + vec2(0.0, up)) * pow(1.0 - float(k) / float(kCurtain + 1), 1.6));
    }
    curtain *= 0.35 + 0.65 * column;
    float near = RingNear(vTexCoord, 0.026);
    vec3 light = BoltLight(RingAt(vTexCoord), 0.35 * near, mix(tone, vec3(1.0), 0.8), tone);
    fragColor = Lit(Input0(vTexCoord), light + mix(tone, vec3(1.0), 0.25 * curtain) * curtain * 0.85, dim, amount);
}
