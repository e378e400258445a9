// SPDX-License-Identifier: GPL-3.0-or-later
// Outlines burst outwards in beats; the air behind each is bent.
#include "outline_echo.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float e = 0.006;
    float here = SoftEcho(vTexCoord, 0.012);
    vec2 slope = vec2(SoftEcho(vTexCoord + vec2(e / Aspect(), 0.0), 0.012) - here, SoftEcho(vTexCoord + vec2(0.0, e), 0.012) - here);
    vec4 bent = Input0(clamp(vTexCoord - 0.035 * slope, 0.0, 1.0));
    float line = Echo(vTexCoord);
    // Bands by age: the light goes out in rings.
    float rings = 0.55 + 0.45 * sin(18.0 * line + 7.0 * global_time);
    vec3 light = Tone() * (0.5 * here + rings * line * 0.7) + vec3(1.0) * pow(line, 6.0) * 0.8;
    vec4 dark = vec4(bent.rgb * (1.0 - dim), bent.a);
    fragColor = mix(Input0(vTexCoord), LightOver(dark, clamp(light, 0.0, 1.0)), amount);
}
