// SPDX-License-Identifier: GPL-3.0-or-later
// The shapes of people slide out of them to both sides, a colour on each.
#include "trail.glsl"

uniform float amount;
uniform int color;   // of one side
uniform int color1;  // of the other

void main() {
    vec4 clip = Input0(vTexCoord);
    float one = Trail(vTexCoord).a;
    float other = OtherTrail(vTexCoord).a;
    one *= sqrt(one);
    other *= sqrt(other);
    // Where both lie on each other the stronger one counts more, so that they do not end in white.
    vec3 tone = mix(UnpackColor(color), UnpackColor(color1), other / max(one + other, 0.001));
    fragColor = LightBehindPeople(clip, tone * (max(one, other) * amount));
}
