// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip turns into the second.
#include "easing.glsl"
#include "progress.glsl"

uniform float softness;  // 0 even, 1 slow at both ends

void main() {
    float t = Progress();
    fragColor = mix(Input0(vTexCoord), Input1(vTexCoord), mix(t, EaseInOutQuad(t), softness));
}
