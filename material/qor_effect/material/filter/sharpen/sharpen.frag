// SPDX-License-Identifier: GPL-3.0-or-later
// Edges are drawn harder; grain below `protect` is left alone, and no rims appear.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float radius;   // in heights of the frame
uniform float protect;  // difference of brightness that counts as grain

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 d = max(vec2(radius), 1.0 / uResolution.y) / vec2(Aspect(), 1.0);
    vec3 low = c.rgb;
    vec3 high = c.rgb;
    vec3 sum = vec3(0.0);
    const vec2 kAround[4] = vec2[](vec2(1.0, 0.0), vec2(-1.0, 0.0), vec2(0.0, 1.0), vec2(0.0, -1.0));
    for (int k = 0; k < 4; ++k) {
        vec3 n = Input0(vTexCoord + kAround[k] * d).rgb;
        sum += n;
        low = min(low, n);
        high = max(high, n);
    }
    float detail = Luma(c.rgb - sum * 0.25);
    detail = sign(detail) * max(abs(detail) - protect, 0.0);
    // A little beyond what stands around the place: crisp, without white lines.
    vec3 reach = 0.25 * (high - low);
    vec3 rgb = clamp(c.rgb + amount * 1.6 * detail, low - reach, high + reach);
    fragColor = vec4(clamp(mix(c.rgb, rgb, step(1e-4, amount)), 0.0, c.a), c.a);
}
