// SPDX-License-Identifier: GPL-3.0-or-later
// Outlines stream off to one side and run through the colours of the rainbow as they fade.
#include "outline_echo.glsl"

void main() {
    float line = Echo(vTexCoord);
    float near = SoftEcho(vTexCoord, 0.02);
    float age = 1.0 - max(line, near);
    vec3 hue = HsvToRgb(vec3(fract(0.95 - 0.8 * age + 0.05 * global_time), 0.85, 1.0)) * Tone();
    vec3 light = hue * (pow(line, 0.7) + 0.35 * near) * 0.85 + vec3(0.9) * pow(line, 8.0);
    fragColor = Shown(light);
}
