// SPDX-License-Identifier: GPL-3.0-or-later
// Slats turn over one behind the other.
#include "transition.glsl"

uniform int count;       // slats a height of the frame
uniform float angle;     // degrees; 0: slats lie level
uniform float softness;  // as a part of a slat
uniform float spread;    // how late the last slat turns
uniform float easing;

void main() {
    float slats = float(clamp(count, 1, 60));
    vec2 across = vec2(-sin(radians(angle)), cos(radians(angle)));
    float reach = abs(across.x) * Aspect() + abs(across.y);
    float place = dot(ToHeightUnits(vTexCoord), across) + 0.5 * reach;
    float late = clamp(1.0 - place / reach, 0.0, 1.0);
    float t = clamp(Eased(easing) * (1.0 + spread) - spread * late, 0.0, 1.0);
    float inSlat = 1.0 - fract(place * slats);
    float soft = max(softness, 0.6 * slats / uResolution.y);
    float edge = mix(-soft, 1.0 + soft, t);
    float open = 1.0 - smoothstep(edge - soft, edge + soft, inSlat);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), open));
}
