// SPDX-License-Identifier: GPL-3.0-or-later
// Squares change to the second clip in random order.
#include "noise.glsl"
#include "transition.glsl"

uniform int count;       // a height of the frame
uniform float softness;  // how slowly one square fades, as a part of the transition
uniform float easing;

void main() {
    float squares = float(clamp(count, 2, 60));
    ivec2 cell = ivec2(floor(ToHeightUnits(vTexCoord) * squares + 1000.0));
    float order = Hash(cell);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), Reveal(order, Eased(easing), 0.5 * softness)));
}
