// SPDX-License-Identifier: GPL-3.0-or-later
// Barrel (positive) or pincushion (negative) distortion.
#include "frame.glsl"

uniform float amount;
uniform int fill;  // 1: scaled so that no empty border shows

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float corner = 0.25 * (Aspect() * Aspect() + 1.0);  // squared distance of the corner
    float k = amount * 0.6;
    float scale = 1.0;
    if (fill == 1) {
        // The farthest source point: the corner for a barrel, the nearer edge for a pincushion.
        float nearest = 0.25 * min(1.0, Aspect() * Aspect());
        scale = k > 0.0 ? 1.0 / (1.0 + k) : 1.0 / (1.0 + k * nearest / corner);
    }
    vec2 source = p * (1.0 + k * dot(p, p) / corner) * scale;
    vec2 uv = FromHeightUnits(source);
    // One pixel of the border fades, so that the bent edge is smooth.
    vec2 border = min(uv, 1.0 - uv) * uResolution;
    float cover = clamp(min(border.x, border.y) + 0.5, 0.0, 1.0);
    fragColor = Input0(uv) * cover;
}
