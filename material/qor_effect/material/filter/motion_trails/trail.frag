// SPDX-License-Identifier: GPL-3.0-or-later
// The trail goes towards the clip, by half in each half life, whatever the frame rate.
#include "color.glsl"

uniform float half_life;  // seconds
uniform int light;        // 1: only what is brighter lingers
uniform int hasPast;
uniform float elapsed;    // seconds since the picture before

void main() {
    vec4 now = Input0(vTexCoord);
    fragColor = now;
    if (hasPast == 0) return;
    vec4 past = Input1(vTexCoord);
    vec4 far = past - now;
    // Eight bits never quite arrive by halving: the last level is taken at once.
    vec4 left = sign(far) * max(abs(far) * exp2(-elapsed / half_life) - 0.6 / 255.0, 0.0);
    vec4 trail = now + left;
    fragColor = light == 0 || Luma(trail.rgb) > Luma(now.rgb) ? trail : now;
    fragColor.rgb = min(fragColor.rgb, fragColor.a);
}
