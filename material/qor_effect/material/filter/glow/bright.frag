// SPDX-License-Identifier: GPL-3.0-or-later
// What shines, at half the size.
#include "color.glsl"

uniform float threshold;  // luma above which a place shines

vec4 Light(vec2 uv) {
    vec4 c = Input0(uv);
    return vec4(c.rgb * smoothstep(threshold, min(threshold + 0.35, 1.2), Luma(c.rgb)), 1.0);
}

void main() {
    vec2 d = 0.375 / uResolution;
    fragColor = 0.25 * (Light(vTexCoord + d) + Light(vTexCoord - d) + Light(vTexCoord + vec2(d.x, -d.y)) +
                        Light(vTexCoord + vec2(-d.x, d.y)));
}
