// SPDX-License-Identifier: GPL-3.0-or-later
// The basic controls of a colourist, with a teal and orange split as its look.
#include "color.glsl"

uniform float exposure;     // stops
uniform float contrast;     // 1 unchanged
uniform float saturation;   // 1 unchanged
uniform float temperature;  // -1 cold .. 1 warm
uniform float tint;         // -1 green .. 1 magenta
uniform float split;        // teal shadows, orange highlights

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    // Exposure and white balance act on light: the display curve is close to a power of 2.2.
    vec3 light = pow(rgb, vec3(2.2)) * exp2(exposure);
    light *= exp2(vec3(0.35, 0.0, -0.45) * temperature + vec3(0.15, -0.3, 0.15) * tint);
    rgb = pow(light, vec3(1.0 / 2.2));
    rgb = (rgb - 0.45) * contrast + 0.45;
    float luma = clamp(Luma(rgb), 0.0, 1.0);
    vec3 teal = vec3(-0.06, 0.02, 0.07);
    vec3 orange = vec3(0.08, 0.02, -0.07);
    rgb += split * mix(teal, orange, smoothstep(0.15, 0.75, luma));
    rgb = mix(vec3(Luma(rgb)), rgb, saturation);
    fragColor = Premultiplied(rgb, c.a);
}
