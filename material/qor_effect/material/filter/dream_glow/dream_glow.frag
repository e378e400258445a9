// SPDX-License-Identifier: GPL-3.0-or-later
// A soft picture is laid over the sharp one like light through gauze.
#include "color.glsl"
#include "pyramid.glsl"

uniform float amount;
uniform float radius;  // in heights of the frame
uniform float warmth;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 soft = Straight(PyramidBlur(vTexCoord, 0.5 * radius));
    soft *= mix(vec3(1.0), vec3(1.08, 1.0, 0.86), warmth);
    vec3 rgb = Straight(c);
    vec3 lit = Screen(rgb, soft * soft * 0.9);
    lit = mix(lit, soft, 0.25);
    fragColor = Premultiplied(mix(rgb, lit, amount), c.a);
}
