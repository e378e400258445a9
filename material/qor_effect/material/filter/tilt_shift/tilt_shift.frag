// SPDX-License-Identifier: GPL-3.0-or-later
// A sharp band in a blurred picture with strong colours: streets turn into toys.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"

uniform float blur;      // radius far from the band, in heights of the frame
uniform float position;  // centre of the band from the top
uniform float width;     // of the sharp band, in heights of the frame
uniform float softness;  // of the way from sharp to blurred
uniform float angle;     // degrees
uniform float saturation;

const int kSamples = 36;

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 centre = vec2(0.0, 0.5 - position);
    float away = abs(Rotate(p - centre, -radians(angle)).y);
    float radius = blur * smoothstep(0.5 * width, 0.5 * width + softness, away);
    vec4 sum = vec4(0.0);
    if (radius * uResolution.y < 0.5) {
        sum = Input0(vTexCoord);
    } else {
        vec2 direction = vec2(radius, 0.0);
        for (int k = 0; k < kSamples; ++k) {
            sum += Input0(clamp(FromHeightUnits(p + DiscRadius(k, kSamples) * direction), 0.0, 1.0));
            direction = kGoldenTurn * direction;
        }
        sum /= float(kSamples);
    }
    vec3 rgb = Straight(sum);
    fragColor = Premultiplied(mix(vec3(Luma(rgb)), rgb, saturation), sum.a);
}
