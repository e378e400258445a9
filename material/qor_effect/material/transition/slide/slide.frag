// SPDX-License-Identifier: GPL-3.0-or-later
// The second clip slides in, pushing the first out or covering it, with motion blur.
#include "easing.glsl"
#include "frame.glsl"
#include "progress.glsl"

uniform float angle;  // degrees; where the second clip comes from: 0 the right, 90 the top
uniform int push;
uniform float blur;

const int kSamples = 16;

vec4 At(vec2 uv, vec2 from, float t) {
    vec2 second = uv - from * (1.0 - t);
    if (Inside(second) > 0.5) return Input1(second);
    // A diagonal push leaves two corners to neither clip: there the first goes on, mirrored.
    return Input0(push == 1 ? Mirror(uv + from * t) : uv);
}

void main() {
    float progress = Progress();
    // The longer part of the direction moves a whole frame, so that nothing is left at the end.
    vec2 from = vec2(cos(radians(angle)), sin(radians(angle)));
    from /= max(abs(from.x), abs(from.y));
    float t = EaseInOutCubic(progress);
    float speed = 6.0 * progress * (1.0 - progress);  // about the slope of the easing
    float spread = blur * 0.05 * speed;
    // Each pixel begins at another part of the step, so that the copies melt into a trail.
    float part = fract(52.9829189 * fract(dot(floor(gl_FragCoord.xy), vec2(0.06711056, 0.00583715))));
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        float shift = ((float(k) + part) / float(kSamples) - 0.5) * spread;
        sum += At(vTexCoord, from, clamp(t + shift, 0.0, 1.0));
    }
    fragColor = sum / float(kSamples);
}
