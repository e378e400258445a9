// SPDX-License-Identifier: GPL-3.0-or-later
// One colour stays, the rest is black and white.
#include "color.glsl"

uniform float amount;
uniform int color;
uniform float range;  // of hues, in turns of the colour circle
uniform float softness;
uniform float rest;   // how much colour the rest keeps

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 hsv = RgbToHsv(rgb);
    float away = abs(fract(hsv.x - RgbToHsv(UnpackColor(color)).x + 0.5) - 0.5);
    float stays = 1.0 - smoothstep(range, range + softness + 0.005, away);
    stays *= smoothstep(0.18, 0.4, hsv.y) * smoothstep(0.06, 0.2, hsv.z);
    vec3 grey = vec3(Luma(rgb));
    fragColor = Premultiplied(mix(rgb, mix(mix(grey, rgb, rest), rgb, stays), amount), c.a);
}
