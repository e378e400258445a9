// SPDX-License-Identifier: GPL-3.0-or-later
// An upright part of the picture stands before its own blurred enlargement, as phone clips are shown on
// a wide screen.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float ratio;  // width by height of what stands in front
uniform float blur;   // radius, in heights of the frame
uniform float dim;
uniform float zoom;
uniform float amount;

const int kSamples = 20;

void main() {
    vec4 c = Input0(vTexCoord);
    float wide = min(ratio / Aspect(), 1.0);
    float tall = min(Aspect() / ratio, 1.0);
    vec2 half_ = 0.5 * vec2(wide, tall);
    vec2 from = (half_ - abs(vTexCoord - 0.5)) * uResolution;
    float front = clamp(min(from.x, from.y) + 0.5, 0.0, 1.0);
    // The front's part of the picture, enlarged until it fills the frame.
    vec2 p = (vTexCoord - 0.5) * min(wide, tall) / zoom + 0.5;
    vec2 direction = vec2(1.0, 0.0);
    float turn = 6.2831853 * Hash(ivec2(gl_FragCoord.xy));
    direction = vec2(cos(turn), sin(turn));
    vec4 sum = vec4(0.0);
    for (int k = 0; k < kSamples; ++k) {
        vec2 at = DiscRadius(k, kSamples) * direction * blur * min(wide, tall) / vec2(Aspect(), 1.0);
        sum += Input0(Mirror(p + at));
        direction = kGoldenTurn * direction;
    }
    vec4 back = sum / float(kSamples);
    back.rgb *= 1.0 - dim;
    fragColor = mix(c, mix(back, c, front), amount);
}
