// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip spins away, the second spins in from the same turn.
#include "easing.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float turn;  // degrees that the frame turns in all
uniform float blur;
uniform float zoom;  // how much nearer the frame comes on the way

const int kSamples = 12;

vec4 At(float turned, float t, float near) {
    float rest = t < 0.5 ? turned : turned - radians(turn);
    vec2 uv = FromHeightUnits(Rotate(ToHeightUnits(vTexCoord), rest) / near);
    return t < 0.5 ? Input0(Mirror(uv)) : Input1(Mirror(uv));
}

void main() {
    float t = Progress();
    float speed = 4.0 * t * (1.0 - t);
    float way = radians(turn) * EaseInOutCubic(t);
    float near = 1.0 + zoom * speed;
    float jitter = Hash(ivec2(gl_FragCoord.xy)) / float(kSamples);
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        float shift = (float(k) / float(kSamples) + jitter - 0.5) * 0.35 * blur * speed * speed;
        sum += At(way + shift * sign(turn), t, near);
    }
    fragColor = Exact(sum / float(kSamples));
}
