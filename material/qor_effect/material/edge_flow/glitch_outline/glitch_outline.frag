// SPDX-License-Identifier: GPL-3.0-or-later
// The outline falls apart into its colours, row by row.
#include "edge_flow.glsl"

void main() {
    int beat = int(floor(global_time * 10.0));
    float row = floor(vTexCoord.y * 45.0);
    float torn = step(0.6, Hash(ivec2(int(row), beat))) * (Hash(ivec2(int(row) + 91, beat)) - 0.5) * 0.08;
    vec2 shift = vec2(0.006 + torn, 0.0);
    vec3 split = vec3(Line(vTexCoord + shift), Line(vTexCoord + vec2(torn, 0.0)), Line(vTexCoord - shift));
    vec3 soft = vec3(Near(vTexCoord + 2.0 * shift), Near(vTexCoord), Near(vTexCoord - 2.0 * shift));
    fragColor = Shown(split + 0.45 * soft * mix(vec3(1.0), Tone(), 0.3));
}
