// SPDX-License-Identifier: GPL-3.0-or-later
// Bright places throw rays away from a light.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float center_x;
uniform float center_y;
uniform float reach;      // length of the rays, as a part of the way to the light
uniform float threshold;  // brightness that shines
uniform int color;

const int kSamples = 24;

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 toLight = vec2(center_x, center_y) - vTexCoord;
    float jitter = Hash(ivec2(gl_FragCoord.xy));
    float light = 0.0;
    for (int k = 0; k < kSamples; ++k) {
        float way = (float(k) + jitter) / float(kSamples);
        vec3 there = Input0(vTexCoord + toLight * way * reach).rgb;
        float y = Luma(there);
        light += smoothstep(threshold, min(threshold + 0.35, 1.3), y) * (1.0 - way);
    }
    light *= 2.2 * amount / float(kSamples);
    light *= 1.0 / (1.0 + 1.5 * dot(toLight * vec2(Aspect(), 1.0), toLight * vec2(Aspect(), 1.0)));
    vec3 rgb = c.rgb + light * UnpackColor(color) * (c.a - 0.6 * c.rgb);
    fragColor = vec4(min(rgb, c.a), c.a);
}
