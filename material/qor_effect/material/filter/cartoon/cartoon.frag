// SPDX-License-Identifier: GPL-3.0-or-later
// Flat colours and ink lines.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform int levels;
uniform float lines;
uniform float width;  // of the lines, in heights of the frame
uniform float saturation;

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 d = max(width, 1.0 / uResolution.y) / vec2(Aspect(), 1.0);
    vec3 sum = Straight(c) * 2.0;
    float l[8];
    for (int k = 0; k < 8; ++k) {
        float a = float(k) * 0.78539816;
        vec3 n = Straight(Input0(vTexCoord + d * vec2(cos(a), sin(a)) * 1.3));
        sum += n;
        l[k] = Luma(n);
    }
    vec3 soft = sum / 10.0;
    float gx = (l[0] - l[4]) * 2.0 + l[1] + l[7] - l[3] - l[5];
    float gy = (l[2] - l[6]) * 2.0 + l[1] + l[3] - l[5] - l[7];
    float ink = smoothstep(0.28, 0.75, lines * length(vec2(gx, gy)));
    // Dark places are opened a little: ink alone is black.
    soft = pow(soft, vec3(0.8));
    float y = max(Luma(soft), 1e-3);
    float steps = float(clamp(levels, 2, 12));
    float scaled = y * steps;
    // Steps with an edge of one pixel or so.
    float edge = clamp((fract(scaled) - 0.5) / max(fwidth(scaled), 0.06) + 0.5, 0.0, 1.0);
    float flat_ = (floor(scaled) + edge) / steps;
    vec3 color = soft * (flat_ / y);
    color = mix(vec3(flat_), color, saturation) * (1.0 - ink);
    fragColor = Premultiplied(mix(Straight(c), color, amount), c.a);
}
