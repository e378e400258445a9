// SPDX-License-Identifier: GPL-3.0-or-later
// Streaks towards a point, as if the lens were zoomed during the exposure.
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float center_x;
uniform float center_y;  // from the top
uniform float clear;     // radius around the point that stays sharp, in heights of the frame

const int kSamples = 28;

void main() {
    vec2 centre = vec2(center_x, 1.0 - center_y);
    vec2 ray = centre - vTexCoord;
    float distanceInHeights = length(ray * vec2(Aspect(), 1.0));
    float strength = amount * smoothstep(clear, clear + 0.35, distanceInHeights);
    float jitter = Hash(ivec2(gl_FragCoord.xy));
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int k = 0; k < kSamples; ++k) {
        float t = (float(k) + jitter) / float(kSamples);
        float w = 1.0 - 0.7 * t;
        sum += w * Input0(vTexCoord + ray * t * strength);
        weights += w;
    }
    fragColor = sum / weights;
}
