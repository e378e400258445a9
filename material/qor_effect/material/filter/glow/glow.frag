// SPDX-License-Identifier: GPL-3.0-or-later
// Bright places bleed light into their surroundings.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float intensity;
uniform float threshold;  // luma above which a place shines
uniform float radius;     // in heights of the frame
uniform int tint;

const int kSamples = 32;

vec3 Light(vec2 uv) {
    vec4 c = Input0(uv);
    float luma = Luma(c.rgb);
    return c.rgb * smoothstep(threshold, min(threshold + 0.35, 1.2), luma);
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float turn = 6.2831853 * Hash(ivec2(gl_FragCoord.xy));  // breaks up rings
    vec3 light = vec3(0.0);
    float weights = 0.0;
    vec2 direction = vec2(cos(turn), sin(turn));
    for (int k = 0; k < kSamples; ++k) {
        float r = DiscRadius(k, kSamples);
        float w = Gaussian(r, 0.45);
        light += w * Light(FromHeightUnits(p + r * direction * radius));
        direction = kGoldenTurn * direction;
        weights += w;
    }
    light *= intensity * UnpackColor(tint) * 1.6 / weights;
    vec3 rgb = c.rgb + light * (1.0 - c.rgb);
    fragColor = vec4(min(rgb, 1.0), max(c.a, min(Luma(light), 1.0)));
    fragColor.rgb = min(fragColor.rgb, fragColor.a);
}
