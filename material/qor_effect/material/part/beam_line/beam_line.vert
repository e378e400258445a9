// SPDX-License-Identifier: GPL-3.0-or-later
// Places the steps of cubic lines: one instance a line, six vertices a step.
#include "noise.glsl"
in vec4 position;  // step, next step
in vec3 texcoord;  // corner -1..1
uniform samplerBuffer uStartEndData;
uniform samplerBuffer uControlData;
uniform samplerBuffer uProgressRange;
uniform samplerBuffer uColor;
uniform mat4 uMVP;
uniform int uPointCount;
uniform float uRadius;         // half width, thousandths of the frame's height
uniform float uZoomStartNode;  // width at progress 0 and 1
uniform float uZoomEndNode;
uniform float uTime;         // ticks
uniform float uWobble;       // how far lines leave their way, heights of the frame
uniform float uWobbleScale;  // turns along a height of the frame
uniform float uWobbleSpeed;  // new ways a second

flat out vec4 vEnds;
flat out vec2 vRadii;
flat out vec2 vRodProgress;
flat out vec4 vRodColor;
out vec2 vPlace;

// Second controls below this stand for none: the line is quadratic.
const float kNoControl = -19999.0;

vec2 LinePoint(vec4 ends, vec4 controls, float t) {
    float s = 1.0 - t;
    if (controls.z < kNoControl) {
        return s * s * ends.xy + 2.0 * s * t * controls.xy + t * t * ends.zw;
    }
    return s * s * s * ends.xy + 3.0 * s * s * t * controls.xy + 3.0 * s * t * t * controls.zw +
           t * t * t * ends.zw;
}

// Noise by the place, so that lines which meet go on meeting.
vec2 Wobbled(vec2 p) {
    if (uWobble <= 0.0) return p;
    float time = uWobbleSpeed * uTime / 25.0;
    float phase = fract(time);
    vec2 q = p * uWobbleScale + 31.0 * floor(time);
    vec2 now = vec2(ValueNoise(q), ValueNoise(q + 113.0));
    vec2 next = vec2(ValueNoise(q + 31.0), ValueNoise(q + 144.0));
    return p + 2.0 * uWobble * (mix(now, next, phase) - 0.5);
}

void main() {
    vec4 ends = ArrayAt(uStartEndData, gl_InstanceID);
    vec4 controls = ArrayAt(uControlData, gl_InstanceID);
    vec2 range = ArrayAt(uProgressRange, gl_InstanceID).xy;
    vRodColor = ArrayAt(uColor, gl_InstanceID);
    vec2 t = position.xy / float(max(uPointCount, 1));
    vec2 toHeights = 0.5 * vec2(uResolution.x / uResolution.y, 1.0);
    vec2 a = (uMVP * vec4(LinePoint(ends, controls, t.x), 0.0, 1.0)).xy * toHeights;
    vec2 b = (uMVP * vec4(LinePoint(ends, controls, t.y), 0.0, 1.0)).xy * toHeights;
    a = Wobbled(a);
    b = Wobbled(b);
    vRodProgress = mix(range.xx, range.yy, t);
    vRadii = mix(vec2(uZoomStartNode), vec2(uZoomEndNode), vRodProgress) * uRadius / 1000.0;
    vEnds = vec4(a, b);

    // A box round the rod, a pixel wider than it for its soft edge.
    vec2 way = b - a;
    vec2 along = dot(way, way) > 0.0 ? normalize(way) : vec2(1.0, 0.0);
    float reach = max(vRadii.x, vRadii.y) + 1.5 / uResolution.y;
    vec2 end = texcoord.x < 0.0 ? a : b;
    vPlace = end + (along * texcoord.x + vec2(-along.y, along.x) * texcoord.y) * reach;
    gl_Position = vec4(vPlace / toHeights, 0.0, 1.0);
    vTexCoord = vPlace / (2.0 * toHeights) + 0.5;
}
