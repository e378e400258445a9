// SPDX-License-Identifier: GPL-3.0-or-later
// Letters that come ("Intro" above 0) or go ("Outro") one after another, for vertex shaders. Places are in
// half heights of the frame, so that turns keep shapes. Outside of both times the whole frame is one quad,
// which is never away.
#include "frame.glsl"
#include "noise.glsl"

in vec3 position;
in vec2 texcoord;
in vec4 center;  // x, y in device space, index of the letter, degrees of its rectangle
in vec4 blrPnt;  // left and right corner of its bottom, of its top
in vec4 tlrPnt;

uniform float Intro;
uniform float Outro;
uniform float amount;
uniform float spread;  // 0 all letters at once, 1 one by one
uniform int charNums;

out float vShown;
out float vAbove;  // above the line that hides a letter; half heights

vec2 ToPlace(vec2 device) { return device * vec2(Aspect(), 1.0); }
vec2 Place() { return ToPlace(position.xy); }
vec2 Middle() { return ToPlace(center.xy); }
vec2 Foot() { return ToPlace(0.5 * (blrPnt.xy + blrPnt.zw)); }
vec2 Head() { return ToPlace(0.5 * (tlrPnt.xy + tlrPnt.zw)); }
int Letter() { return int(center.z + 0.5); }
float Order() { return float(Letter()) / float(max(charNums - 1, 1)); }
bool IsWholeFrame() { return abs(position.x) == 1.0 && abs(position.y) == 1.0; }

// 1 before a letter has begun to come, 0 in its place.
float Away() {
    if (IsWholeFrame()) return 0.0;
    float come = 1.0;
    if (Intro > 0.0) {
        come = global_time / Intro;
    } else if (Outro > 0.0) {
        come = (total_time - global_time) / Outro;
    }
    float own = 1.0 - 0.85 * spread;
    return amount * (1.0 - clamp((come - Order() * (1.0 - own)) / own, 0.0, 1.0));
}

// Turned about `pivot` counter-clockwise and scaled there.
vec2 TurnedAt(vec2 p, vec2 pivot, float radians, vec2 scale) {
    return pivot + Rotate((p - pivot) * scale, radians);
}

void Put(vec2 p, float shown) {
    vTexCoord = texcoord;
    vShown = shown;
    vAbove = 1.0;
    gl_Position = vec4(p / vec2(Aspect(), 1.0), 0.0, 1.0);
}
