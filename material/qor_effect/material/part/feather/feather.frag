// SPDX-License-Identifier: GPL-3.0-or-later
// Feathers a picture in two passes, upright and level; may give it one colour on the way.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"

uniform int uEclosion;   // width, 0..100
uniform int uHorizontal; // 0 upright, 1 level
uniform int uChangeColor;
uniform int color_r, color_g, color_b;
// What is not clear, parts of the frame with y down; an owner that knows says so. Nothing: 0 for all.
uniform float uBoundLeftX, uBoundLeftY, uBoundRightX, uBoundRightY;

const int kMostPairs = 8;

bool IsClear() {
    vec2 at = vec2(vTexCoord.x, 1.0 - vTexCoord.y);
    vec2 from = vec2(uBoundLeftX, uBoundLeftY);
    vec2 to = vec2(uBoundRightX, uBoundRightY);
    return all(greaterThan(to, from)) && (any(lessThan(at, from)) || any(greaterThan(at, to)));
}

void main() {
    if (IsClear()) {
        fragColor = vec4(0.0);
        return;
    }
    float radius = float(uEclosion) / 100.0 * 0.06;  // in heights of the frame
    vec2 direction = uHorizontal == 1 ? vec2(1.0 / Aspect(), 0.0) : vec2(0.0, 1.0);
    // One bilinear read for two pixels, as long as that is enough to see every one.
    int pairs = clamp(int(ceil(0.5 * radius * uResolution.y)), 1, kMostPairs);
    float step = 1.0 / float(pairs);
    float centre = 0.5 * step;
    vec4 sum = centre * Input0(vTexCoord);
    float weights = centre;
    for (int k = 0; k < kMostPairs; ++k) {
        if (k >= pairs) break;
        float t = (float(k) + 0.75) * step;
        float w = Gaussian(t, 0.42) * step;
        vec2 away = direction * (t * radius);
        sum += w * (Input0(vTexCoord + away) + Input0(vTexCoord - away));
        weights += 2.0 * w;
    }
    vec4 c = sum / weights;
    if (uChangeColor == 1) c.rgb = vec3(color_r, color_g, color_b) / 255.0 * c.a;
    fragColor = c;
}
