// SPDX-License-Identifier: GPL-3.0-or-later
// A star on each bright highlight. The including file says how the star picture lies: `vec4 StarPicture(vec2 uv)`.
#include "frame.glsl"
#include "noise.glsl"

uniform samplerBuffer posArray;  // x, y as fractions of the frame with y down; brightness
uniform int count;
uniform float size;              // 10..100
uniform int alpha;               // 0..100

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    vec3 light = vec3(0.0);
    for (int k = 0; k < min(count, 256); ++k) {
        vec4 star = ArrayAt(posArray, k);
        // Each star twinkles at its own pace; the brightest places (0 when saturated) get the largest stars.
        float pace = Hash(ivec2(star.xy * 64.0));
        float twinkle = 0.8 + 0.2 * sin(global_time * (3.0 + 4.0 * pace) + 6.2831853 * pace);
        float reach = size / 100.0 * 0.28 * (1.0 - 0.35 * star.z) * (0.75 + 0.5 * pace) * twinkle;
        vec2 d = (p - ToHeightUnits(vec2(star.x, 1.0 - star.y))) / reach;
        if (max(abs(d.x), abs(d.y)) >= 1.0) continue;
        vec4 picture = StarPicture(Rotate(d, 0.25 * (pace - 0.5)) * 0.5 + 0.5);
        light += picture.rgb * twinkle;
    }
    light = min(light, 1.0) * float(alpha) / 100.0;
    vec3 rgb = 1.0 - (1.0 - c.rgb) * (1.0 - light);
    float a = max(c.a, max(light.r, max(light.g, light.b)));
    fragColor = vec4(min(rgb, a), a);
}
