// SPDX-License-Identifier: GPL-3.0-or-later
// Lays light (slot 1) over a picture (slot 0): 3 as a screen, 4 added.
uniform int Opacity;     // of the picture, percent
uniform int BlendAlpha;  // of the light, percent
uniform int BlendType;

void main() {
    vec4 picture = Input0(vTexCoord) * float(Opacity) / 100.0;
    vec4 light = Input1(vTexCoord) * float(BlendAlpha) / 100.0;
    vec3 rgb = BlendType == 4 ? picture.rgb + light.rgb : picture.rgb + light.rgb * (1.0 - picture.rgb);
    float a = picture.a + light.a * (1.0 - picture.a);
    fragColor = vec4(min(rgb, vec3(a)), a);
}
