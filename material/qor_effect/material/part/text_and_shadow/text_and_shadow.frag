// SPDX-License-Identifier: GPL-3.0-or-later
// Solid letters (slot 0) with a soft shadow below them. The clip in slot 1 is the plain text, which they replace.
#include "blur.glsl"
#include "color.glsl"
#include "frame.glsl"

uniform float shadow;

const int kSamples = 12;

void main() {
    vec4 letters = Input0(vTexCoord);
    float cover = 0.0;
    if (shadow > 0.0) {
        vec2 unit = vec2(1.0 / Aspect(), 1.0);
        vec2 at = vTexCoord + vec2(-0.010, 0.016) * unit;
        // Far from the letters four looks round tell that there is nothing to gather.
        float near = 0.0;
        for (int k = 0; k < 4; ++k) {
            vec2 side = vec2((k & 1) * 2 - 1, (k >> 1) * 2 - 1);
            near += Input0(at + 0.012 * side * unit).a;
        }
        if (near > 0.0) {
            vec2 direction = vec2(0.018, 0.0);
            for (int k = 0; k < kSamples; ++k) {
                cover += Input0(at + DiscRadius(k, kSamples) * direction * unit).a;
                direction = kGoldenTurn * direction;
            }
        }
        cover *= shadow / float(kSamples);
    }
    fragColor = Over(letters, vec4(0.0, 0.0, 0.0, cover));
}
