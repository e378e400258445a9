// SPDX-License-Identifier: GPL-3.0-or-later
// Slanting threads turn over one after the other and show the second clip on their back. The weave runs between the
// borders of what is opaque in the clip.
#include "easing.glsl"
#include "frame.glsl"
#include "progress.glsl"

uniform float stripes;    // along the height of the frame
uniform float angle;      // degrees against the upright
uniform float softness;
uniform float edgeLeft;   // borders of the opaque band, fractions of the width
uniform float edgeRight;

// x: how much of the second clip is seen where the threads are at `across`; y: how deep the fold's shadow is.
vec2 Thread(float across, float x, float t) {
    float thread = floor(across);
    float inside = fract(across);
    // Threads alternate: even ones run ahead, odd ones follow, as warp and weft.
    float lag = mod(thread, 2.0) < 0.5 ? 0.0 : 0.18;
    float start = 0.5 * x + lag;
    float turn = clamp((t * 1.001 - start * 0.8) / (1.0 - 0.544), 0.0, 1.0);  // 0.544 = 0.8 x the latest start
    turn = EaseInOutQuad(turn);
    // The thread opens from one of its borders to the other.
    float edge = mix(-softness, 1.0 + softness, turn);
    float second = 1.0 - smoothstep(edge - softness, edge + max(softness, 0.001), inside);
    float fold = (1.0 - smoothstep(0.0, 0.25, abs(inside - edge))) * step(0.001, turn) * step(turn, 0.999);
    return vec2(second, fold);
}

const int kSamples = 4;  // across a pixel, since threads end sharply

void main() {
    float t = Progress();
    float band = max(edgeRight - edgeLeft, 0.001);
    float x = clamp((vTexCoord.x - edgeLeft) / band, 0.0, 1.0);
    float across = Rotate(ToHeightUnits(vTexCoord), radians(angle)).x * stripes;
    float pixel = stripes / uResolution.y;
    vec2 seen = vec2(0.0);
    for (int k = 0; k < kSamples; ++k) {
        seen += Thread(across + ((float(k) + 0.5) / float(kSamples) - 0.5) * pixel, x, t);
    }
    seen /= float(kSamples);
    vec4 c = mix(Input0(vTexCoord), Input1(vTexCoord), seen.x);
    fragColor = vec4(c.rgb * (1.0 - 0.45 * seen.y), c.a);
}
