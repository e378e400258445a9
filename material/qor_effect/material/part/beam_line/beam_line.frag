// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of light: the part of the path between both progress values shines, brightest at its head.
#include "beam_line.glsl"

uniform float uProgress;
uniform float uProgressEnd;
uniform float uAlpha;
uniform float uTail;            // 0 shines evenly, 1 fades away behind the head
uniform float uAlphaStartNode;  // strength at progress 0 and 1
uniform float uAlphaEndNode;

// A window that runs past 1 goes on at 0.
float Shine(float progress) {
    float behind = progress - uProgress;
    if (behind < 0.0 && uProgressEnd > 1.0) behind += 1.0;
    float window = uProgressEnd - uProgress;
    if (behind < 0.0 || behind > window || window <= 0.0) return 0.0;
    return mix(1.0, pow(behind / window, 2.0), uTail);
}

void main() {
    float way = RodWay(vPlace);
    float progress = mix(vRodProgress.x, vRodProgress.y, way);
    float a = RodCover(vPlace, way) * Shine(progress) * vRodColor.a * uAlpha *
              mix(uAlphaStartNode, uAlphaEndNode, clamp(progress, 0.0, 1.0));
    fragColor = vec4(vRodColor.rgb * a, a);
}
