// SPDX-License-Identifier: GPL-3.0-or-later
// Places the steps of cubic lines: one instance a line, six vertices a step. Who includes this defines
// Bend: where a place of the line (height units) goes; along the line, progress of the path.
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
uniform float uBack;  // how much thinner and weaker both ends of the path are: the back of a ring

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

void main() {
    vec4 ends = ArrayAt(uStartEndData, gl_InstanceID);
    vec4 controls = ArrayAt(uControlData, gl_InstanceID);
    vec2 range = ArrayAt(uProgressRange, gl_InstanceID).xy;
    vRodColor = ArrayAt(uColor, gl_InstanceID);
    vec2 t = position.xy / float(max(uPointCount, 1));
    vec2 toHeights = 0.5 * vec2(uResolution.x / uResolution.y, 1.0);
    vRodProgress = mix(range.xx, range.yy, t);
    vec2 a = (uMVP * vec4(LinePoint(ends, controls, t.x), 0.0, 1.0)).xy * toHeights;
    vec2 b = (uMVP * vec4(LinePoint(ends, controls, t.y), 0.0, 1.0)).xy * toHeights;
    a = Bend(a, vRodProgress.x);
    b = Bend(b, vRodProgress.y);
    vRadii = mix(vec2(uZoomStartNode), vec2(uZoomEndNode), vRodProgress) * uRadius / 1000.0;
    vec2 ends_ = smoothstep(0.0, 0.3, min(vRodProgress, 1.0 - vRodProgress));
    vRadii *= mix(vec2(1.0), 0.45 + 0.55 * ends_, uBack);
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
