// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of light: the part of the path between both progress values shines, brightest at its head.
#include "beam_line.glsl"

uniform float uProgress;
uniform float uProgressEnd;
uniform float uAlpha;
uniform float uTail;            // 0 shines evenly, 1 fades away behind the head
uniform float uAlphaStartNode;  // strength at progress 0 and 1
uniform float uAlphaEndNode;
uniform float uTime;       // ticks
uniform float uTailPower;  // how quickly the light fades behind the head; 0 as 2
uniform float uDashes;     // along the whole path; 0 an unbroken line
uniform float uDashFill;   // part of each that shines; 0 round dots
uniform float uDashFlow;   // dashes a second

// How much of the pixel the dashes leave, `across` heights of the frame beside the line.
float Dash(float progress, float way, float across) {
    if (uDashes <= 0.0) return 1.0;
    float span = vRodProgress.y - vRodProgress.x;
    if (span <= 0.0) return 0.0;
    float scale = distance(vEnds.xy, vEnds.zw) / span;  // heights of the frame for the whole path
    float n = floor(uDashes);
    float along = abs(fract(progress * n - uDashFlow * uTime / 25.0) - 0.5) / n * scale;
    float radius = mix(vRadii.x, vRadii.y, way);
    float d = uDashFill > 0.0 ? along - 0.5 * uDashFill / n * scale : length(vec2(along, across)) - radius;
    return clamp(0.5 - d * uResolution.y, 0.0, 1.0);
}
uniform float uBack;            // how much weaker both ends of the path are: the back of a ring

// A window that runs past 1 goes on at 0.
float Shine(float progress) {
    float behind = progress - uProgress;
    if (behind < 0.0 && uProgressEnd > 1.0) behind += 1.0;
    float window = uProgressEnd - uProgress;
    if (behind < 0.0 || behind > window || window <= 0.0) return 0.0;
    return mix(1.0, pow(behind / window, uTailPower > 0.0 ? uTailPower : 2.0), uTail);
}

void main() {
    float way = RodWay(vPlace);
    float progress = mix(vRodProgress.x, vRodProgress.y, way);
    float a = RodCover(vPlace, way) * Shine(progress) * vRodColor.a * uAlpha *
              mix(uAlphaStartNode, uAlphaEndNode, clamp(progress, 0.0, 1.0));
    a *= Dash(progress, way, distance(vPlace, mix(vEnds.xy, vEnds.zw, way)));
    a *= mix(1.0, smoothstep(0.0, 0.3, min(progress, 1.0 - progress)), 0.8 * uBack);
    fragColor = vec4(vRodColor.rgb * a, a);
}
