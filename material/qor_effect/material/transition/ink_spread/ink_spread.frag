// SPDX-License-Identifier: GPL-3.0-or-later
// Ink drops onto the picture and spreads with ragged borders; the second clip shows in it.
#include "noise.glsl"
#include "transition.glsl"

uniform float softness;
uniform float detail;  // of the borders, waves a height of the frame
uniform float easing;

const int kDrops = 7;

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float ragged = 0.34 * (Fbm(p * detail + 7.0) - 0.5) + 0.1 * (Fbm(p * detail * 4.0) - 0.5);
    float nearest = 10.0;
    for (int k = 0; k < kDrops; ++k) {
        vec2 drop = (vec2(Hash(2 * k + 11), Hash(2 * k + 12)) - 0.5) * vec2(Aspect(), 1.0);
        float late = 0.35 * float(k) / float(kDrops);
        nearest = min(nearest, length(p - drop) + late);
    }
    float farthest = 0.62 * max(Aspect(), 1.0) + 0.2;
    float order = clamp((nearest + ragged + 0.02) / (0.6 * farthest), 0.0, 1.0);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), Reveal(order, Eased(easing), softness)));
}
