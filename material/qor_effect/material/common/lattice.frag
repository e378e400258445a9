// SPDX-License-Identifier: GPL-3.0-or-later
// Round dots that add up, and the clip where they have not taken over.
#include "dot.glsl"

uniform float amount;
uniform int enableBGColor;

flat in vec4 vDot;
flat in float vPixels;

void main() {
    if (vDot.a < 0.0) {
        vec4 clip = Input0(vTexCoord);
        // Where the clip was it is dark now, unless there is a colour to show.
        vec4 dark = vec4(0.0, 0.0, 0.0, enableBGColor == 1 ? 0.0 : clip.a);
        fragColor = mix(clip, dark, amount);
        return;
    }
    fragColor = vDot * DotCover(2.0 * vTexCoord - 1.0, vPixels) * amount;
}
