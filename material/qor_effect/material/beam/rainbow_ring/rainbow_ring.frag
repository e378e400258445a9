// SPDX-License-Identifier: GPL-3.0-or-later
// A ring in all colours, which run round it.
#include "body_ring.glsl"

void main() {
    vec2 middle = vec2(0.5 * (uBound.x + uBound.z), 1.0 - 0.5 * (uBound.y + uBound.w));
    vec2 p = (vTexCoord - middle) / max(vec2(uBound.z - uBound.x, uBound.w - uBound.y), vec2(1e-4));
    float turn = atan(p.y, p.x) / 6.2831853 - 0.35 * global_time;
    vec3 tone = HsvToRgb(vec3(fract(turn), 0.85, 1.0)) * RingTone();
    float near = RingNear(vTexCoord, 0.03);
    vec3 light = BoltLight(RingAt(vTexCoord), 0.5 * near, mix(tone, vec3(1.0), 0.45), tone);
    fragColor = Lit(Input0(vTexCoord), light, dim, amount);
}
