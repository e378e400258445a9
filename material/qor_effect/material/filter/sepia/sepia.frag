// SPDX-License-Identifier: GPL-3.0-or-later
// The brown of old prints; shadows lose their black with `faded`.
#include "color.glsl"

uniform float amount;
uniform float faded;
uniform int color;  // of the lights

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float y = Luma(rgb);
    vec3 brown = mix(vec3(0.16, 0.09, 0.04) * faded * 1.6, UnpackColor(color), pow(y, 0.95));
    brown = mix(brown, brown * vec3(1.06, 0.94, 0.76), 1.0 - y);
    fragColor = Premultiplied(mix(rgb, brown, amount), c.a);
}
