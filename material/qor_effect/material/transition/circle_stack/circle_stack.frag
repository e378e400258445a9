// SPDX-License-Identifier: GPL-3.0-or-later
// Rings of both clips by turns grow from the middle.
#include "transition.glsl"

uniform int count;       // rings
uniform float softness;  // in heights of the frame
uniform float easing;

void main() {
    float t = Eased(easing);
    float reach = 0.5 * length(vec2(Aspect(), 1.0));
    float from = length(ToHeightUnits(vTexCoord));
    float rings = float(clamp(count, 2, 12));
    float open = 0.0;
    // Ring k lies from k to k + 1; odd ones start later and close the gaps.
    for (int k = 0; k < 12; ++k) {
        if (k >= clamp(count, 2, 12)) break;
        float start = mod(float(k), 2.0) < 0.5 ? 0.0 : 0.45;
        float own = clamp((t - start) / 0.55, 0.0, 1.0);
        float inner = float(k) / rings * reach;
        float outer = (float(k) + own) / rings * reach * 1.003;
        float ring = Cover(from - outer, softness) * (k == 0 ? 1.0 : 1.0 - Cover(from - inner + 0.003, 0.0));
        open = max(open, ring * step(1e-5, own));
    }
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), open));
}
