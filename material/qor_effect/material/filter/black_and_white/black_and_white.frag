// SPDX-License-Identifier: GPL-3.0-or-later
// Black and white by a mix of the channels, toned if wanted.
#include "color.glsl"

uniform float amount;
uniform float red;
uniform float green;
uniform float blue;
uniform float contrast;
uniform int tone;  // colour of white

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float grey = clamp(dot(rgb, vec3(red, green, blue)), 0.0, 1.0);
    grey = clamp((grey - 0.5) * contrast + 0.5, 0.0, 1.0);
    fragColor = Premultiplied(mix(rgb, grey * UnpackColor(tone), amount), c.a);
}
