// SPDX-License-Identifier: GPL-3.0-or-later
// What stands behind something that does not fill the frame: the clips themselves, enlarged, blurred, darker.
#include "blur.glsl"
#include "frame.glsl"

const int kBackdropSamples = 24;

// From the first clip at `t` 0 to the second at 1.
vec4 Backdrop(vec2 uv, float t, float brightness) {
    vec2 at = (uv - 0.5) * 0.8 + 0.5;
    vec2 direction = vec2(0.09, 0.0);
    vec3 sum = vec3(0.0);
    for (int k = 0; k < kBackdropSamples; ++k) {
        vec2 place = Mirror(at + DiscRadius(k, kBackdropSamples) * direction / vec2(Aspect(), 1.0));
        sum += mix(Input0(place), Input1(place), t).rgb;
        direction = kGoldenTurn * direction;
    }
    return vec4(sum / float(kBackdropSamples) * brightness, 1.0);
}
