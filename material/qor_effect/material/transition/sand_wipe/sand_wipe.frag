// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip turns to sand and is blown off the second one. Slot 2 are the grains.
#include "color.glsl"
#include "sand.glsl"
#include "transition.glsl"

uniform float duration;  // seconds; a shorter transition takes all of its time

void main() {
    float left = SandLeft(vTexCoord, SandProgress(duration));
    vec4 clips = mix(Input1(vTexCoord), Input0(vTexCoord), left);
    fragColor = Exact(Over(Input2(vTexCoord), clips));
}
