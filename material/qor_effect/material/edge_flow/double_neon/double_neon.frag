// SPDX-License-Identifier: GPL-3.0-or-later
// Two tubes, one round the other.
#include "edge_flow.glsl"

void main() {
    float soft = Input2(vTexCoord).a;
    // A fixed softness lies at a fixed distance from the line.
    float away = log(max(soft, 0.001) / 0.05);
    float outer = exp(-14.0 * away * away);
    float rim = exp(-1.6 * away * away);
    float near = Near(vTexCoord);
    vec3 light = Pale(Tone()) * Line(vTexCoord) + Tone() * near * near;
    fragColor = Shown(light + Pale(SecondTone()) * outer + 0.55 * SecondTone() * rim);
}
