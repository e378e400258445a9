// SPDX-License-Identifier: GPL-3.0-or-later
// Tone curves: the master curve first, then red, green and blue. The strips follow the clip.
#include "color.glsl"

float StripAt(sampler2D strip, float value) {
    return texture(strip, vec2((clamp(value, 0.0, 1.0) * 255.0 + 0.5) / 256.0, 0.5)).r;
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    rgb = vec3(StripAt(uInput4, rgb.r), StripAt(uInput4, rgb.g), StripAt(uInput4, rgb.b));
    rgb = vec3(StripAt(uInput1, rgb.r), StripAt(uInput2, rgb.g), StripAt(uInput3, rgb.b));
    fragColor = Premultiplied(rgb, c.a);
}
