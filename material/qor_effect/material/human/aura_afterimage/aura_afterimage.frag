// SPDX-License-Identifier: GPL-3.0-or-later
// A warm light grows out of people and flows away in waves.
#include "noise.glsl"
#include "trail.glsl"

uniform float amount;
uniform int color;    // next to the people
uniform int color1;   // far away
uniform float waves;  // over the length of the trail
uniform float speed;  // waves in a second

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 push = vec2(ValueNoise(p * 9.0 + vec2(0.0, -1.6 * Seconds())), ValueNoise(p * 9.0 + 31.0)) - 0.5;
    float fresh = Trail(FromHeightUnits(p + 0.035 * push)).a;
    float wave = 0.72 + 0.28 * cos(6.2831853 * (waves * (1.0 - fresh) - speed * Seconds()));
    vec3 tone = mix(UnpackColor(color1), UnpackColor(color), fresh * fresh);
    fragColor = LightBehindPeople(clip, clamp(tone * (amount * wave * pow(fresh, 1.3)), 0.0, 1.0));
}
