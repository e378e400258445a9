// SPDX-License-Identifier: GPL-3.0-or-later
// A ring that crackles: threads of it strike out to both sides.
#include "body_ring.glsl"

// The ring as a restless noise bends it.
float Thread(float seed, float reach) {
    vec2 p = ToHeightUnits(vTexCoord) * 9.0;
    float t = floor(global_time * 14.0) + seed;
    vec2 away = vec2(Fbm(p + 3.7 * t), Fbm(p + 31.0 + 5.3 * t)) - 0.5;
    return RingAt(vTexCoord + away * reach / vec2(Aspect(), 1.0));
}

void main() {
    vec3 tone = RingTone();
    float hot = max(max(Thread(1.0, 0.05), Thread(7.0, 0.11)), 0.7 * Thread(13.0, 0.2));
    float near = RingNear(vTexCoord, 0.032);
    vec3 light = BoltLight(hot, 0.4 * near, mix(tone, vec3(1.0), 0.8), tone);
    fragColor = Lit(Input0(vTexCoord), light, dim, amount);
}
