// SPDX-License-Identifier: GPL-3.0-or-later
// A round lens over a face: large in the middle, joining the picture at its rim.
#include "color.glsl"

uniform float centerX;  // pixels of the frame, y down
uniform float centerY;
uniform float radius;         // side of the face's box, in sides of the frame
uniform float magnification;  // in the middle of the lens
uniform float lens_size;      // diameter of the lens, in sides of the box
uniform float bulge;          // 0 a flat glass with a steep edge, 1 a ball
uniform float rim;            // how much of the frame of the glass is seen
uniform int rim_color;

const float kRing = 0.035;  // width of the rim, in radii of the lens

void main() {
    vec2 center = vec2(centerX, uResolution.y - centerY);
    vec2 away = vTexCoord * uResolution - center;
    // The larger of both fractions is that of the frame's shorter side, as faces are about square.
    float lens = max(0.5 * lens_size * radius * min(uResolution.x, uResolution.y), 1e-3);
    float r = length(away) / lens;
    float pixel = 1.0 / lens;

    // Grows with r all the way and arrives at the rim where it is: nothing folds, nothing is torn.
    float steepness = mix(14.0, 2.0, bulge);
    float share = mix(1.0 / magnification, 1.0, pow(min(r, 1.0), steepness));
    vec4 picture = Input0((center + away * share) / uResolution);
    if (r >= 1.0) picture = Input0(vTexCoord);

    vec2 toward = away / max(length(away), 1e-3);
    float inside = clamp(0.5 + (1.0 - r) / pixel, 0.0, 1.0);
    float seen = rim * smoothstep(0.0, 6.0, lens);  // a lens of a few pixels has no rim

    // Glass: darker towards the rim, a reflection at the upper left.
    float dim = 1.0 - 0.3 * seen * inside * smoothstep(0.78, 1.0, r);
    float arc = smoothstep(0.035, 0.0, abs(r - 0.86)) * smoothstep(0.72, 0.98, dot(toward, vec2(-0.6, 0.8)));
    // A shadow that falls to the lower right.
    float fallen = length(away - lens * vec2(0.05, -0.08)) / lens;
    dim *= 1.0 - 0.45 * seen * (1.0 - inside) * smoothstep(1.22, 0.96, fallen);
    vec3 rgb = mix(Straight(picture) * dim, vec3(1.0), 0.3 * seen * inside * arc);

    float ring = clamp(0.5 + (kRing - abs(r - 1.0)) / pixel, 0.0, 1.0) * seen;
    float across = (r - 1.0) / kRing;  // -1 inner, 1 outer edge
    float facing = dot(toward, vec2(-0.5, 0.866)) * -across;
    vec3 metal = UnpackColor(rim_color) * (0.62 + 0.38 * facing) * (1.0 - 0.35 * across * across);
    metal += 0.35 * smoothstep(0.5, 1.0, facing);
    fragColor = Premultiplied(mix(rgb, metal, ring), picture.a);
}
