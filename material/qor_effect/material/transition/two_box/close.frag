// SPDX-License-Identifier: GPL-3.0-or-later
// The fronts of the boxes show the second clip, their outer sides the first.
#include "backdrop.glsl"
in vec3 vFace;
in float vDepth;
uniform float shade;  // how much darker a side is that is away
uniform float background;  // brightness of the clips that stand behind: 0 black
uniform float uProcessTime;

void main() {
    if (vDepth < 0.0) {
        fragColor = Backdrop(vTexCoord, 1.0 - uProcessTime, background);
        return;
    }
    vec4 c = vFace.z > 0.5 ? Input1(vTexCoord) : Input0(vTexCoord);
    float away = clamp((vDepth - 2.4125) / 2.0, 0.0, 1.0);
    fragColor = vec4(c.rgb * (1.0 - shade * away), c.a);
}
