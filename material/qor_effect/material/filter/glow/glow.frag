// SPDX-License-Identifier: GPL-3.0-or-later
// Bright places bleed light into their surroundings: a narrow rim and a wide veil.
#include "color.glsl"
#include "pyramid.glsl"

uniform float intensity;
uniform float radius;  // in heights of the frame
uniform int tint;

vec3 Veil(float sigma) { return PyramidBlur(vTexCoord, max(sigma, kPyramidSigma / kPyramidRows)).rgb; }

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 light = 0.45 * Veil(0.2 * radius) + 0.55 * Veil(0.6 * radius);
    light *= intensity * UnpackColor(tint) * 1.6;
    vec3 rgb = c.rgb + light * (1.0 - c.rgb);
    fragColor = vec4(min(rgb, 1.0), max(c.a, min(Luma(light), 1.0)));
    fragColor.rgb = min(fragColor.rgb, fragColor.a);
    if (intensity <= 0.0) fragColor = c;
}
