// SPDX-License-Identifier: GPL-3.0-or-later
// Maps dark to one colour and bright to another.
#include "color.glsl"

uniform float amount;
uniform int shadows;
uniform int highlights;
uniform float contrast;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float luma = clamp((Luma(rgb) - 0.5) * contrast + 0.5, 0.0, 1.0);
    vec3 toned = mix(UnpackColor(shadows), UnpackColor(highlights), luma);
    fragColor = Premultiplied(mix(rgb, toned, amount), c.a);
}
