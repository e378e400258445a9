// SPDX-License-Identifier: GPL-3.0-or-later
// Outlines rise from people like smoke in a draught.
#include "outline_echo.glsl"

void main() {
    float t = global_time;
    vec2 p = ToHeightUnits(vTexCoord);
    float loose = 1.0 - Echo(vTexCoord);
    vec2 sway = vec2(ValueNoise(vec2(5.0 * p.x, 5.0 * p.y - 1.1 * t)), ValueNoise(vec2(5.0 * p.x + 31.0, 5.0 * p.y - 0.9 * t))) - 0.5;
    vec2 uv = vTexCoord + 0.05 * loose * sway / vec2(Aspect(), 1.0);
    float veil = SoftEcho(uv, 0.03);
    float thread = Echo(uv);
    float wisp = 0.45 + 0.9 * Fbm(vec2(9.0 * p.x, 6.0 * p.y - 1.6 * t));
    vec3 light = Tone() * (1.1 * veil * wisp + 0.5 * thread * thread) + vec3(0.35) * pow(thread, 4.0);
    fragColor = Shown(light);
}
