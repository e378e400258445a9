// SPDX-License-Identifier: GPL-3.0-or-later
// Waves run through the picture. The first pass bends it across `direction`, the second along it.
#include "frame.glsl"

uniform float height;        // of the wave, in heights of the frame
uniform float width;         // from crest to crest, in heights of the frame
uniform float direction;     // degrees; the way in which the waves run
uniform float speed;         // crests a second
uniform int shape;           // 0 sine, 1 triangle, 2 square, 3 saw
uniform float cross_height;  // of the second wave
uniform int calLayer;        // 1 first pass, 2 second

float Wave(float phase) {
    float t = fract(phase);
    if (shape == 1) return 1.0 - 4.0 * abs(t - 0.5);
    if (shape == 2) return t < 0.5 ? 1.0 : -1.0;
    if (shape == 3) return 2.0 * t - 1.0;
    return sin(6.2831853 * t);
}

void main() {
    float turn = radians(direction);
    vec2 run = vec2(cos(turn), sin(turn));
    vec2 across = vec2(-run.y, run.x);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 shift = vec2(0.0);
    if (calLayer == 1) {
        shift = across * height * Wave(dot(p, run) / width - global_time * speed);
    } else if (cross_height > 0.0) {
        shift = run * cross_height * Wave(dot(p, across) / width - global_time * speed * 0.8 + 0.25);
    }
    fragColor = Input0(Mirror(FromHeightUnits(p + shift)));
}
