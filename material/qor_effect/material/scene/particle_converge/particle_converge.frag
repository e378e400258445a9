// SPDX-License-Identifier: GPL-3.0-or-later
// What has arrived of the clip, and the pixels on their way to it. Nothing at amount 0.
#include "color.glsl"
#include "pixel_flight.glsl"

uniform float amount;  // how far pixels fly
uniform float duration, lifetime;
uniform float uBoundLeftX, uBoundRightX;
uniform int reverse;

void main() {
    vec4 clip = Input0(vTexCoord);
    float own = ValueNoise(ToHeightUnits(vTexCoord) * 70.0);
    float flight = Flight(2.0 * vTexCoord.x - 1.0, own, uBoundLeftX, uBoundRightX, duration, lifetime, reverse);
    vec4 drawn = Over(Input1(vTexCoord), clip * (smoothstep(0.85, 1.0, flight)));
    fragColor = amount > 0.0 ? drawn : clip;
}
