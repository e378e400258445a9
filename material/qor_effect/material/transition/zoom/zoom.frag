// SPDX-License-Identifier: GPL-3.0-or-later
// Flies into the first clip and lands on the second.
#include "easing.glsl"
#include "frame.glsl"
#include "noise.glsl"
#include "progress.glsl"

uniform float amount;  // how far the first clip grows
uniform float blur;

const int kSamples = 20;

void main() {
    float progress = Progress();
    float t = EaseInOutCubic(progress);
    float speed = 4.0 * progress * (1.0 - progress);
    float firstScale = pow(amount, t);
    float secondScale = pow(amount, t - 1.0);
    float mixing = smoothstep(0.35, 0.65, progress);
    float jitter = Hash(ivec2(gl_FragCoord.xy));
    vec2 p = vTexCoord - 0.5;
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        float spread = ((float(k) + jitter) / float(kSamples) - 0.5) * blur * 0.35 * speed;
        vec2 q = p * (1.0 + spread);
        vec4 first = mixing < 1.0 ? Input0(Mirror(q / firstScale + 0.5)) : vec4(0.0);
        vec4 second = mixing > 0.0 ? Input1(Mirror(q / secondScale + 0.5)) : vec4(0.0);
        sum += mix(first, second, mixing);
    }
    fragColor = sum / float(kSamples);
}
