// SPDX-License-Identifier: GPL-3.0-or-later
// The fronts of the boxes show the first clip, their outer sides the second.
#include "backdrop.glsl"
in vec3 vFace;
in float vDepth;
uniform float shade;  // how much darker a side is that is away
uniform float background;  // brightness of the clips that stand behind: 0 black
uniform float uProcessTime;

void main() {
    if (vDepth < 0.0) {
        fragColor = Backdrop(vTexCoord, uProcessTime, background);
        return;
    }
    vec4 c = vFace.z > 0.5 ? Input0(vTexCoord) : Input1(vTexCoord);
    float away = clamp((vDepth - 2.4125) / 2.0, 0.0, 1.0);
    fragColor = vec4(c.rgb * (1.0 - shade * away), c.a);
}
