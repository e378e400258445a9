// SPDX-License-Identifier: GPL-3.0-or-later
// Flashes at a steady beat that fade like a lamp.
#include "color.glsl"

uniform float amount;
uniform float rate;   // flashes a second
uniform float width;  // of a flash, as a part of the beat
uniform int color;

void main() {
    float phase = fract(global_time * rate);
    float light = phase < width ? 1.0 - phase / width : 0.0;
    light *= light * amount;
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 lit = mix(rgb, UnpackColor(color), 0.75 * light) * (1.0 + 0.6 * light);
    fragColor = Premultiplied(lit, c.a);
}
