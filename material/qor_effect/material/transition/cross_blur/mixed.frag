// SPDX-License-Identifier: GPL-3.0-or-later
// Both clips at half their size, one turning into the other.
#include "progress.glsl"

uniform float easing;

vec4 At(vec2 uv, float t) { return mix(Input0(uv), Input1(uv), smoothstep(0.2, 0.8, t)); }

void main() {
    float p = Progress();
    float t = mix(p, p * p * (3.0 - 2.0 * p), easing);
    vec2 d = 0.375 / uResolution;
    fragColor = 0.25 * (At(vTexCoord + d, t) + At(vTexCoord - d, t) + At(vTexCoord + vec2(d.x, -d.y), t) +
                        At(vTexCoord + vec2(-d.x, d.y), t));
}
