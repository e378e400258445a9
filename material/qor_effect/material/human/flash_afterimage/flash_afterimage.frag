// SPDX-License-Identifier: GPL-3.0-or-later
// Each shape that people leave behind has a random colour.
#include "trail.glsl"

uniform float amount;
uniform int color;        // brightest of each channel
uniform int randomColor;  // the effect colours the trail

void main() {
    vec4 clip = Input0(vTexCoord);
    vec4 trail = Trail(vTexCoord);
    vec3 tone = Straight(trail);
    // Dark shades become as bright as the others: the hue is what was drawn.
    tone /= max(max(tone.r, max(tone.g, tone.b)), 0.2);
    tone = randomColor == 1 ? tone : UnpackColor(color);
    fragColor = BehindPeople(clip, vec4(clamp(tone, 0.0, 1.0), 1.0) *
                                       (amount * smoothstep(0.0, 0.55, trail.a) * 0.92));
}
