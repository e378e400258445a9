// SPDX-License-Identifier: GPL-3.0-or-later
// A hand that holds the camera; borders are mirrored, or hidden by a little zoom.
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float speed;  // movements a second
uniform float rotation;
uniform float zoom;

float Sway(float t, float seed) {
    return ValueNoise(vec2(t, seed)) - 0.5 + 0.4 * (ValueNoise(vec2(2.7 * t, seed + 31.0)) - 0.5);
}

void main() {
    float t = global_time * speed;
    vec2 away = amount * 0.08 * vec2(Sway(t, 1.0), Sway(t, 7.0));
    float turn = amount * rotation * 0.09 * Sway(0.8 * t, 13.0);
    float near = 1.0 + min(amount * 4.0, 1.0) * zoom;
    vec2 p = Rotate(ToHeightUnits(vTexCoord), turn) / near + away;
    fragColor = Input0(Mirror(FromHeightUnits(p)));
}
