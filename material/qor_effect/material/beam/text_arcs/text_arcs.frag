// SPDX-License-Identifier: GPL-3.0-or-later
// Arcs of light swing across a text. The text feathered is in slot 3: it holds the light together.
#include "line_light.glsl"

uniform float spill;  // how much light leaves the text

void main() {
    float near = 1.0 - exp(-3.0 * Input3(vTexCoord).a);
    vec4 clip = Input0(vTexCoord);
    vec4 lit = LineLight();
    fragColor = mix(clip, lit, clamp(mix(spill * near, 1.0, clip.a), 0.0, 1.0));
}
