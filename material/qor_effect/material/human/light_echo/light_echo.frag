// SPDX-License-Identifier: GPL-3.0-or-later
// Each outline stays in the air for a while, as a thread of light that cools down.
#include "outline_echo.glsl"

void main() {
    float line = Echo(vTexCoord);
    float near = SoftEcho(vTexCoord, 0.022);
    vec3 young = mix(Tone(), vec3(1.0), 0.7);
    vec3 light = mix(Tone() * 0.7, young, smoothstep(0.5, 1.0, line)) * pow(line, 0.8);
    fragColor = Shown(light + Tone() * 0.9 * near);
}
