// SPDX-License-Identifier: GPL-3.0-or-later
// The front of the cube shows the first clip, every other side the second; behind it both, blurred and dark.
#include "backdrop.glsl"
in vec3 vFace;
in float vDepth;
uniform float shade;       // how much darker a side is that turns away
uniform float background;  // brightness of what stands behind: 0 black
uniform float uProcessTime;

void main() {
    if (vDepth < 0.0) {
        fragColor = Backdrop(vTexCoord, uProcessTime, background);
        return;
    }
    vec4 c = vFace.z > 0.5 ? Input0(vTexCoord) : Input1(vTexCoord);
    float turned = clamp((vDepth - 2.4125) / 2.0, 0.0, 1.0);
    fragColor = vec4(c.rgb * (1.0 - shade * turned), c.a);
}
