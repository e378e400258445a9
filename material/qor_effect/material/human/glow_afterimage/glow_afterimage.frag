// SPDX-License-Identifier: GPL-3.0-or-later
// People leave light behind them, which goes from one colour to another as it fades.
#include "trail.glsl"

uniform float amount;
uniform int color;   // of the youngest
uniform int color1;  // of the oldest

void main() {
    vec4 clip = Input0(vTexCoord);
    float fresh = Trail(vTexCoord).a;
    vec3 tone = mix(UnpackColor(color1), UnpackColor(color), smoothstep(0.2, 0.9, fresh));
    fragColor = LightBehindPeople(clip, tone * (amount * fresh * sqrt(fresh)));
}
