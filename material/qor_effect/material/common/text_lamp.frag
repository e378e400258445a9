// SPDX-License-Identifier: GPL-3.0-or-later
// Letters that shine of themselves: neon tubes, wires, lamps in a row.
#include "text_light.glsl"

uniform int face_color;
uniform int side_color;
uniform int lamp_kind;  // 0 tube, 1 wire, 2 lamps
uniform float dome;

void main() {
    vec3 n = Normal(dome);
    vec3 eye = ToEye();
    float facing = abs(dot(n, eye));
    vec3 face = UnpackColor(face_color);
    vec3 side = UnpackColor(side_color);
    float hum = 0.94 + 0.06 * sin(50.0 * global_time) * ValueNoise(vec2(5.0 * global_time, 0.5));
    if (lamp_kind == 1) {
        float pulse = 0.65 + 0.35 * sin(8.0 * vWorld.x - 4.0 * global_time);
        fragColor = Shown(vec3(0.0), mix(side, face, pulse) * light, 1.0);
        return;
    }
    if (lamp_kind == 2) {
        vec3 box = Developed(Linear(side) * (0.3 + Studio(n, 0.6)) * 0.35) * Contact();
        vec3 shine = vec3(0.0);
        if (IsFace()) {
            vec2 p = vWorld.xy * 30.0;
            vec2 cell = floor(p);
            float d = length(fract(p) - 0.5);
            float pixel = 30.0 * 2.0 / uResolution.y;
            float lamp = 1.0 - smoothstep(0.30 - pixel, 0.30 + pixel, d);
            float chase = 0.55 + 0.45 * step(0.0, sin(0.8 * (cell.x + cell.y) - 7.0 * global_time));
            shine = mix(face, vec3(1.0), 0.6 * (1.0 - smoothstep(0.0, 0.25, d))) * lamp * chase * light;
            shine += face * 0.25 * chase * exp(-6.0 * d * d);
            box *= 1.0 - lamp;
        }
        fragColor = Shown(box, shine * hum, 1.0);
        return;
    }
    // A tube is white in its middle, where one looks through most of the gas.
    float core = smoothstep(0.35, 1.0, facing);
    vec3 shine = mix(side, mix(face, vec3(1.0), 0.85 * core), 0.35 + 0.65 * core) * light * hum;
    fragColor = Shown(vec3(0.0), shine, 1.0);
}
