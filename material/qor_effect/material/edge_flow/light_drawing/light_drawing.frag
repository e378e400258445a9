// SPDX-License-Identifier: GPL-3.0-or-later
// A brush of light draws bright shapes once, and its trail cools down.
#include "edge_flow.glsl"

uniform float uProgress;

void main() {
    float near = Near(vTexCoord);
    float line = Line(vTexCoord);
    float cooling = smoothstep(1.0, 0.6, uProgress);
    vec3 hot = mix(Tone(), vec3(1.0), 0.4 + 0.6 * cooling);
    fragColor = Shown(hot * line + mix(SecondTone(), Tone(), near) * near * (0.55 + 0.6 * cooling));
}
