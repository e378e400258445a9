// SPDX-License-Identifier: GPL-3.0-or-later
// Blades of the second clip turn open about the middle.
#include "transition.glsl"

uniform int blades;
uniform float softness;  // of the edges, as a part of a blade
uniform float turn;      // degrees that the wheel turns on the way
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    float parts = float(clamp(blades, 1, 24));
    float angle = atan(p.y, p.x) / 6.2831853 + turn / 360.0 * t;
    float in_ = fract(angle * parts);
    // A pixel in turns of a blade: more of it near the middle.
    float pixel = 0.6 / uResolution.y / max(length(p), 1e-3) / 6.2831853 * parts;
    float soft = max(softness, min(pixel, 0.5));
    float edge = mix(-soft, 1.0 + soft, t);
    float open = 1.0 - smoothstep(edge - soft, edge + soft, in_);
    // The seam between two blades, where the circle closes.
    open = max(open, smoothstep(1.0 - soft, 1.0, in_) * smoothstep(0.0, soft, edge) * 0.5);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), open));
}
