// SPDX-License-Identifier: GPL-3.0-or-later
// Soft discs of light that float through the picture.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform int tint;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 light = Input1(FlipV(CoverUv(vTexCoord, Input1Size()))).rgb;
    light = max(light - 0.06, 0.0) / 0.94;  // the clip's black is not quite black
    vec3 rgb = Screen(Straight(c), clamp(light * UnpackColor(tint) * amount, 0.0, 1.0));
    fragColor = Premultiplied(rgb, c.a);
}
