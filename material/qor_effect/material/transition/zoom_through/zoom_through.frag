// SPDX-License-Identifier: GPL-3.0-or-later
// The camera flies into the first clip, and out of the depth comes the second.
#include "easing.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float center_x;
uniform float center_y;
uniform float zoom;
uniform float blur;

const int kSamples = 12;

void main() {
    float t = Progress();
    float in_ = EaseInOutCubic(t);
    float speed = 4.0 * t * (1.0 - t);
    vec2 center = vec2(center_x, center_y);
    float jitter = Hash(ivec2(gl_FragCoord.xy)) / float(kSamples);
    float mixed = smoothstep(0.35, 0.65, t);
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        float shift = (float(k) / float(kSamples) + jitter - 0.5) * 0.3 * blur * speed;
        float near = exp2(log2(zoom) * (in_ + shift));
        vec2 first = center + (vTexCoord - center) / near;
        vec2 second = center + (vTexCoord - center) / (near / zoom);
        sum += mix(Input0(Mirror(first)), Input1(Mirror(second)), mixed);
    }
    fragColor = Exact(sum / float(kSamples));
}
