// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip blurs away, the second comes out of the blur.
#include "pyramid.glsl"
#include "transition.glsl"

uniform float radius;  // where both meet, in heights of the frame
uniform float easing;

void main() {
    float t = Eased(easing);
    float bump = 1.0 - abs(2.0 * t - 1.0);
    // The pyramid holds the mixture of both clips; only near the ends their own detail is left.
    vec4 blurred = PyramidBlur(vTexCoord, 0.5 * radius * bump + 0.76 / kPyramidRows);
    float sharp = 1.0 - smoothstep(0.0, 0.12, bump);
    vec4 clip = t < 0.5 ? Input0(vTexCoord) : Input7(vTexCoord);
    float t0 = Progress();
    fragColor = t0 <= 0.0 ? Input0(vTexCoord) : t0 >= 1.0 ? Input7(vTexCoord) : mix(blurred, clip, sharp);
}
