// SPDX-License-Identifier: GPL-3.0-or-later
// A streak of light that runs along the outline, white at its head.
#include "edge_flow.glsl"

void main() {
    float line = Line(vTexCoord);
    float near = Near(vTexCoord);
    vec3 tone = mix(SecondTone(), Tone(), line + 0.5 * near);
    fragColor = Shown(Pale(tone) * min(line + 0.4 * near * near, 1.0) + tone * near);
}
