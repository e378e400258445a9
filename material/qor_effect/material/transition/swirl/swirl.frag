// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip is stirred into a whirl, from which the second unwinds.
#include "transition.glsl"

uniform float turns;
uniform float radius;  // of the whirl, in heights of the frame
uniform float easing;

void main() {
    float t = Eased(easing);
    float wound = t < 0.5 ? 2.0 * t : 2.0 - 2.0 * t;
    wound = wound * wound * (3.0 - 2.0 * wound);
    vec2 p = ToHeightUnits(vTexCoord);
    float inner = max(0.0, 1.0 - length(p) / radius);
    float angle = 6.2831853 * turns * wound * inner * inner * (t < 0.5 ? 1.0 : -1.0);
    vec2 uv = Mirror(FromHeightUnits(Rotate(p, angle)));
    fragColor = Exact(mix(Input0(uv), Input1(uv), smoothstep(0.0, 1.0, t)));
}
