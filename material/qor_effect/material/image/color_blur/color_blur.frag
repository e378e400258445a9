// SPDX-License-Identifier: GPL-3.0-or-later
// Blurs red, green and blue each by its own amount: soft fringes of colour. Slot 1 is the feathered picture.
#include "color.glsl"

uniform float uEnhance;            // lifts bright places, as far as the picture is blurred
uniform float WholeBlurIntension;  // blur of all three
uniform float RBlurIntension;
uniform float GBlurIntension;
uniform float BBlurIntension;

void main() {
    vec4 sharp = Input0(vTexCoord);
    vec4 soft = Input1(vTexCoord);
    vec3 own = vec3(RBlurIntension, GBlurIntension, BBlurIntension);
    vec3 part = 1.0 - (1.0 - own) * (1.0 - WholeBlurIntension);
    float alpha = mix(sharp.a, soft.a, max(part.r, max(part.g, part.b)));
    // The same lift for the three channels: only edges may change their colour.
    vec3 rgb = mix(sharp.rgb, soft.rgb, part);
    float lift = uEnhance * Luma(soft.rgb) * dot(part, vec3(1.0 / 3.0));
    rgb = alpha - (alpha - min(rgb, alpha)) / (1.0 + lift);
    fragColor = vec4(rgb, alpha);
}
