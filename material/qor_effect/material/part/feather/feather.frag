// SPDX-License-Identifier: GPL-3.0-or-later
// Feathers a picture in two passes, upright and level; may give it one colour on the way.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"

uniform int uEclosion;   // width, 0..100
uniform int uHorizontal; // 0 upright, 1 level
uniform int uChangeColor;
uniform int color_r, color_g, color_b;

const int kReach = 12;

void main() {
    float radius = float(uEclosion) / 100.0 * 0.06;  // in heights of the frame
    vec2 direction = uHorizontal == 1 ? vec2(1.0 / Aspect(), 0.0) : vec2(0.0, 1.0);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int k = -kReach; k <= kReach; ++k) {
        float t = float(k) / float(kReach);
        float w = Gaussian(t, 0.42);
        sum += w * Input0(vTexCoord + direction * (t * radius));
        weights += w;
    }
    vec4 c = sum / weights;
    if (uChangeColor == 1) c.rgb = vec3(color_r, color_g, color_b) / 255.0 * c.a;
    fragColor = c;
}
