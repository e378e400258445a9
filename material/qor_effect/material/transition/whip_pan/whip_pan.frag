// SPDX-License-Identifier: GPL-3.0-or-later
// The camera is torn to the side: the first clip smears away, the second comes to rest.
#include "easing.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float angle;  // degrees; where the camera turns to: 0 right, 90 up
uniform float blur;
uniform int turns;    // frames that pass by

const int kSamples = 12;

vec4 At(vec2 uv, float t) { return t < 0.5 ? Input0(Mirror(uv)) : Input1(Mirror(uv)); }

void main() {
    float t = Progress();
    vec2 direction = vec2(cos(radians(angle)), sin(radians(angle)));
    direction /= max(abs(direction.x), abs(direction.y));
    // An even number of frames on the way keeps a mirrored picture upright at its end.
    float way = 2.0 * float(clamp(turns, 1, 4)) * EaseInOutCubic(t);
    float speed = 4.0 * t * (1.0 - t);
    float spread = 0.25 * blur * speed * speed;
    float jitter = Hash(ivec2(gl_FragCoord.xy)) / float(kSamples);
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        float shift = (float(k) / float(kSamples) + jitter - 0.5) * spread;
        sum += At(vTexCoord + direction * (way + shift), t);
    }
    fragColor = Exact(sum / float(kSamples));
}
