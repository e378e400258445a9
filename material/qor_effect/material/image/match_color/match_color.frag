// SPDX-License-Identifier: GPL-3.0-or-later
// Moves the picture's colour statistics to those of a reference.
// Method: E. Reinhard et al., "Color Transfer between Images", 2001: mean and deviation are exchanged in
// a decorrelated space of logarithmic cone responses. The constants are those of the measurement.
#include "color.glsl"

uniform float mean_b, mean_g, mean_r;     // reference: lightness, yellow-blue, red-green
uniform float stddb, stddg, stddr;
uniform float mean_b1, mean_g1, mean_r1;  // this frame
uniform float stddb1, stddg1, stddr1;
uniform int strength;                     // 0..100

const mat3 kRgbToLms = mat3(0.3811, 0.1967, 0.0241, 0.5783, 0.7244, 0.1288, 0.0402, 0.0782, 0.8444);

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 lms = log2(max(kRgbToLms * rgb, 0.03)) * 0.30103;  // to base 10
    vec3 lab = vec3((lms.x + lms.y + lms.z) * 0.57735, (lms.x + lms.y - 2.0 * lms.z) * 0.408248,
                    (lms.x - lms.y) * 0.707107);
    vec3 mean1 = vec3(mean_b1, mean_g1, mean_r1);
    vec3 deviation1 = max(vec3(stddb1, stddg1, stddr1), 0.0001);
    // A flat picture must not blow up its noise.
    vec3 scale = clamp(vec3(stddb, stddg, stddr) / deviation1, 0.25, 4.0);
    lab = (lab - mean1) * scale + vec3(mean_b, mean_g, mean_r);
    vec3 back = lab * vec3(0.57735, 0.408248, 0.707107);
    lms = vec3(back.x + back.y + back.z, back.x + back.y - back.z, back.x - 2.0 * back.y);
    vec3 matched = inverse(kRgbToLms) * exp2(lms / 0.30103);
    fragColor = Premultiplied(mix(rgb, clamp(matched, 0.0, 1.0), float(strength) / 100.0), c.a);
}
