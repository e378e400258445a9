// SPDX-License-Identifier: GPL-3.0-or-later
// Contrast of middle-sized forms: faces and clouds get depth, edges no rims.
#include "color.glsl"
#include "pyramid.glsl"

uniform float amount;  // below 0 softens
uniform float radius;  // of the forms, in heights of the frame

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float around = Luma(Straight(PyramidBlur(vTexCoord, 0.5 * radius)));
    float own = Luma(rgb);
    float detail = own - around;
    // Strong edges and the ends of the scale are held back.
    detail /= 1.0 + 4.0 * abs(detail);
    float middle = 1.0 - pow(abs(2.0 * own - 1.0), 2.0);
    fragColor = amount == 0.0 ? c : Premultiplied(rgb + 1.3 * amount * detail * (0.35 + 0.65 * middle), c.a);
}
