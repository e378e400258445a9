// SPDX-License-Identifier: GPL-3.0-or-later
// Scratches and dust of an old print, with faded colours and a lamp that flickers.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;  // of all of it
uniform float dust;
uniform float fading;
uniform float flicker;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 sepia = vec3(1.0, 0.86, 0.66) * (0.06 + 0.94 * Luma(rgb));
    rgb = mix(rgb, sepia, fading);
    int frame = int(floor(global_time * 12.0));
    rgb *= 1.0 - flicker * 0.25 * Hash(frame);
    // The sequence holds white marks on black; each turn of it is shown mirrored another way.
    vec2 uv = CoverUv(vTexCoord, Input1Size());
    if (Hash(frame / 8 + 11) > 0.5) uv.x = 1.0 - uv.x;
    if (Hash(frame / 8 + 29) > 0.5) uv.y = 1.0 - uv.y;
    vec3 marks = Input1(uv).rgb;
    rgb = mix(rgb, vec3(0.96, 0.94, 0.88), dust * marks.r);  // scratches: bright
    rgb *= 1.0 - dust * marks.g;                             // dust: dark
    fragColor = mix(c, Premultiplied(rgb, c.a), amount);
}
