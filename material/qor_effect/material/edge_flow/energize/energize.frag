// SPDX-License-Identifier: GPL-3.0-or-later
// Rings of energy that leave the outline, one after the other.
#include "edge_flow.glsl"

void main() {
    float soft = Input2(vTexCoord).a * glow;
    float away = -log(max(soft, 0.0005));  // grows with the distance
    float ring = pow(0.5 + 0.5 * cos(3.2 * away - 7.0 * global_time), 6.0);
    float fade = smoothstep(6.0, 1.0, away);
    fragColor = Shown(mix(SecondTone(), Tone(), fade) * ring * fade + Pale(Tone()) * Line(vTexCoord));
}
