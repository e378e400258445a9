// SPDX-License-Identifier: GPL-3.0-or-later
// Squares grow from their middles, first the light ones of the board, then the dark ones.
#include "transition.glsl"

uniform int count;       // squares a height of the frame
uniform float softness;  // as a part of a square
uniform float easing;

void main() {
    float squares = float(clamp(count, 1, 40));
    vec2 p = ToHeightUnits(vTexCoord) * squares + 0.5;
    vec2 cell = floor(p);
    vec2 in_ = abs(fract(p) - 0.5);
    float odd = mod(cell.x + cell.y, 2.0);
    float t = clamp(Eased(easing) * 1.6 - 0.6 * odd, 0.0, 1.0);
    float soft = max(softness * 0.5, 0.6 * squares / uResolution.y);
    float edge = mix(-0.5 * soft, 0.5 + soft, sqrt(t));
    float open = (1.0 - smoothstep(edge - soft, edge + soft, max(in_.x, in_.y))) * step(1e-5, t);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), open));
}
