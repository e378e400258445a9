// SPDX-License-Identifier: GPL-3.0-or-later
// One step of a line as a rod with round ends. The vertex shader of lines fills what stands here: ends in
// height units, half widths and progress at both.

flat in vec4 vEnds;
flat in vec2 vRadii;
flat in vec2 vRodProgress;
flat in vec4 vRodColor;
in vec2 vPlace;  // height units

// How far along the rod a place is, 0..1.
float RodWay(vec2 p) {
    vec2 way = vEnds.zw - vEnds.xy;
    float square = dot(way, way);
    return square > 0.0 ? clamp(dot(p - vEnds.xy, way) / square, 0.0, 1.0) : 0.0;
}

// How much of the pixel the rod covers; thinner than a pixel it fades.
float RodCover(vec2 p, float way) {
    float pixel = 1.0 / uResolution.y;
    float radius = mix(vRadii.x, vRadii.y, way);
    float thick = max(radius, 0.5 * pixel);
    float d = distance(p, mix(vEnds.xy, vEnds.zw, way));
    return clamp((thick - d) / pixel + 0.5, 0.0, 1.0) * min(radius / (0.5 * pixel), 1.0);
}
