// SPDX-License-Identifier: GPL-3.0-or-later
// The brightest (or darkest) places of the first clip melt away before the others.
#include "color.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float softness;
uniform int bright_first;
uniform float drip;  // how far melting places run down, in heights of the frame
uniform float easing;

void main() {
    float t = Eased(easing);
    float luma = sqrt(Luma(Straight(Input0(vTexCoord))));
    float grain = 0.12 * (Fbm(ToHeightUnits(vTexCoord) * 6.0) - 0.5);
    float order = clamp((bright_first == 1 ? 1.0 - luma : luma) * 0.84 + 0.08 + 2.0 * grain, 0.0, 1.0);
    float gone = Reveal(order, t, softness);
    vec2 run = vec2(0.0, drip * gone * (1.0 - gone) * 2.0 * ValueNoise(vec2(ToHeightUnits(vTexCoord).x * 40.0, 3.0)));
    fragColor = Exact(mix(Input0(vTexCoord + run), Input1(vTexCoord), gone));
}
