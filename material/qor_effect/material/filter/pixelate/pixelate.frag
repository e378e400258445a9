// SPDX-License-Identifier: GPL-3.0-or-later
// Coarse blocks, square or round, each with the mean colour of its place.
#include "color.glsl"
#include "frame.glsl"

uniform float size;       // edge of a block in heights of the frame
uniform float roundness;  // 0 squares, 1 discs
uniform float gap;        // empty part between blocks

const int kGrid = 5;  // samples along an edge of the block

void main() {
    vec2 cell = ToHeightUnits(vTexCoord) / size;
    vec2 corner = floor(cell);
    vec4 mean = vec4(0.0);
    for (int y = 0; y < kGrid; ++y) {
        for (int x = 0; x < kGrid; ++x) {
            vec2 at = corner + (vec2(x, y) + 0.5) / float(kGrid);
            mean += Input0(FromHeightUnits(at * size));
        }
    }
    mean /= float(kGrid * kGrid);
    vec2 d = abs(cell - corner - 0.5) * 2.0;
    float reach = mix(max(d.x, d.y), length(d), roundness);
    float pixel = 2.0 / (size * uResolution.y);  // one pixel of the frame in the unit of `reach`
    float edge = 1.0 - gap;
    bool whole = gap <= 0.0 && roundness <= 0.0;
    float cover = whole ? 1.0 : 1.0 - smoothstep(edge - pixel, edge, reach);
    // What lies between the blocks is a dim version of them, so that the picture stays whole.
    fragColor = vec4(mean.rgb * mix(0.12, 1.0, cover), mean.a);
}
