// SPDX-License-Identifier: GPL-3.0-or-later
// At its end the clip turns to sand that the wind carries away. Slot 2 are the grains.
#include "color.glsl"
#include "sand.glsl"

uniform float amount;
uniform float duration;  // seconds

void main() {
    vec4 clip = Input0(vTexCoord);
    vec4 left = clip * SandLeft(vTexCoord, SandProgress(duration));
    fragColor = mix(clip, Over(Input2(vTexCoord), left), amount);
}
