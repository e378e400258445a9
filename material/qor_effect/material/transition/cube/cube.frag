// SPDX-License-Identifier: GPL-3.0-or-later
// The clips are two sides of a cube that turns by one side.
#include "color.glsl"
#include "transition.glsl"

uniform int direction;  // where the first clip goes: 0 left, 1 right, 2 down, 3 up
uniform float eye;      // its distance, in heights of the frame
uniform int background;
uniform float easing;

// The ray through `p` against the side that is turned by `angle` about the middle of the cube: x along
// the way of the turn, `half_` half the length of a side. z is 1 where the side is seen.
vec3 SideHit(vec2 p, float angle, float half_, float away) {
    float s = sin(angle);
    float c = cos(angle);
    // The side's point u lies at (u c + half s, half + away - (half c - u s)) from the frame's plane.
    float base = half_ + away - half_ * c;
    float bottom = c * eye - p.x * s;
    if (abs(bottom) < 1e-4) return vec3(0.0);
    float u = (p.x * (eye + base) - half_ * s * eye) / bottom;
    float depth = (eye + base + u * s) / eye;
    return vec3(u, p.y * depth, depth > 0.02 && c > 0.0 ? 1.0 : 0.0);
}

void main() {
    float t = Eased(easing);
    bool level = direction < 2;
    float way = direction == 0 || direction == 2 ? -1.0 : 1.0;
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 q = level ? p : p.yx;
    float half_ = level ? 0.5 * Aspect() : 0.5;
    float away = 0.6 * half_ * sin(3.1415927 * t);
    float turned = 1.5707963 * t;
    vec3 a = SideHit(q, way * turned, half_, away);
    vec3 b = SideHit(q, way * (turned - 1.5707963), half_, away);
    vec2 uvA = FromHeightUnits(level ? a.xy : a.yx);
    vec2 uvB = FromHeightUnits(level ? b.xy : b.yx);
    vec4 first = Input0(clamp(uvA, 0.0, 1.0));
    vec4 second = Input1(clamp(uvB, 0.0, 1.0));
    first.rgb *= 1.0 - 0.5 * t;
    second.rgb *= 0.5 + 0.5 * t;
    vec4 c = vec4(UnpackColor(background), 1.0);
    c = mix(c, first, a.z * InsideSmooth(uvA));
    c = mix(c, second, b.z * InsideSmooth(uvB));
    fragColor = Exact(c);
}
