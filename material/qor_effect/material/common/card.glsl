// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame.glsl"

// A flat card in space, seen by an eye on the axis of the frame. Places are in heights of the frame.

// Where the ray through `p` meets a card that is turned by `turned` about an axis through its centre
// (`axis`: its angle from upright) and lies `away` behind the frame; z is 1 where it is seen at all.
vec3 CardHit(vec2 p, float axis, float turned, float away, float eye) {
    vec2 q = Rotate(p, -axis);
    float s = sin(turned);
    float c = cos(turned);
    // The card's point (x, y) lies at (x c, y, away + x s); the eye looks from (0, 0, -eye).
    float x = q.x * (eye + away) / (c * eye - s * q.x + (abs(c * eye - s * q.x) < 1e-4 ? 1e-4 : 0.0));
    float depth = (eye + away + x * s) / eye;
    return vec3(Rotate(vec2(x, q.y * depth), axis), depth > 0.02 ? 1.0 : 0.0);
}

// The same place of a card's back, seen from behind.
vec2 MirrorAcross(vec2 p, float axis) {
    vec2 q = Rotate(p, -axis);
    return Rotate(vec2(-q.x, q.y), axis);
}
