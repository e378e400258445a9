// SPDX-License-Identifier: GPL-3.0-or-later
// Digits as strokes of even width with round ends, in a box of x -0.5..0.5 and y -1..1.
#include "frame.glsl"

float ToStroke(vec2 p, vec2 a, vec2 b) {
    vec2 way = b - a;
    return length(p - a - way * clamp(dot(p - a, way) / dot(way, way), 0.0, 1.0));
}

// To a circle's arc about `c`: of half the angle `half_angle` to both sides of `middle`, radians.
float ToArc(vec2 p, vec2 c, float radius, float middle, float half_angle) {
    vec2 q = Rotate(p - c, -middle);
    q.y = abs(q.y);
    vec2 end = radius * vec2(cos(half_angle), sin(half_angle));
    bool beside = atan(q.y, q.x) <= half_angle;
    return beside ? abs(length(q) - radius) : length(q - end);
}

// To the middle of the digit's strokes.
float ToDigit(vec2 p, int digit) {
    const float kPi = 3.14159265;
    const float r = 0.46;     // of the lower bowls
    const float u = 0.42;     // of the upper ones
    const vec2 low = vec2(0.0, -0.46);
    const vec2 high = vec2(0.0, 0.50);
    if (digit == 0) {
        vec2 q = vec2(p.x, p.y - clamp(p.y, -0.46, 0.46));
        return abs(length(q) - r);
    }
    if (digit == 1) {
        return min(ToStroke(p, vec2(0.08, 0.92), vec2(0.08, -0.92)), ToStroke(p, vec2(0.08, 0.92), vec2(-0.26, 0.62)));
    }
    if (digit == 2) {
        float bow = ToArc(p, vec2(0.0, 0.47), 0.45, radians(60.0), radians(105.0));
        return min(bow, min(ToStroke(p, vec2(0.318, 0.152), vec2(-0.45, -0.92)), ToStroke(p, vec2(-0.45, -0.92), vec2(0.46, -0.92))));
    }
    if (digit == 3) {
        return min(ToArc(p, high, u, radians(25.0), radians(130.0)), ToArc(p, vec2(0.0, -0.42), 0.5, radians(-25.0), radians(130.0)));
    }
    if (digit == 4) {
        float d = min(ToStroke(p, vec2(0.2, 0.92), vec2(-0.5, -0.42)), ToStroke(p, vec2(-0.5, -0.42), vec2(0.5, -0.42)));
        return min(d, ToStroke(p, vec2(0.2, 0.92), vec2(0.2, -0.92)));
    }
    if (digit == 5) {
        float d = min(ToStroke(p, vec2(0.38, 0.92), vec2(-0.3, 0.92)), ToStroke(p, vec2(-0.3, 0.92), vec2(-0.37, 0.04)));
        return min(d, ToArc(p, vec2(-0.02, -0.38), 0.54, radians(-12.0), radians(142.0)));
    }
    if (digit == 7) {
        return min(ToStroke(p, vec2(-0.44, 0.92), vec2(0.44, 0.92)), ToStroke(p, vec2(0.44, 0.92), vec2(-0.14, -0.92)));
    }
    if (digit == 8) {
        return min(abs(length(p - vec2(0.0, 0.5)) - 0.42), abs(length(p - vec2(0.0, -0.42)) - 0.5));
    }
    // Nine is a six that stands on its head.
    if (digit == 9) p = -p;
    float bowl = abs(length(p - low) - r);
    return min(bowl, ToArc(p, vec2(0.76, -0.30), 1.225, radians(150.0), radians(25.0)));
}
