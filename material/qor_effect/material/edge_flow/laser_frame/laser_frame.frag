// SPDX-License-Identifier: GPL-3.0-or-later
// Two streaks that chase each other round the frame.
#include "edge_flow.glsl"

void main() {
    vec4 sharp = Input1(vTexCoord);
    vec4 soft = Input2(vTexCoord);
    // White is the first streak, magenta the second.
    float second = soft.a > 0.0 ? 1.0 - clamp(soft.g / soft.a, 0.0, 1.0) : 0.0;
    vec3 tone = mix(Tone(), SecondTone(), second);
    float near = Near(vTexCoord);
    fragColor = Shown(Pale(tone) * min(1.3 * sharp.a, 1.0) + tone * near);
}
