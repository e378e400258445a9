// SPDX-License-Identifier: GPL-3.0-or-later
// Letters roll along their line like wheels.
#include "letters.glsl"

void main() {
    float a = Away();
    float way = a * a * (Aspect() + 0.8);
    float radius = max(0.5 * distance(Foot(), Head()), 0.02);
    Put(TurnedAt(Place(), Middle(), way / radius * 0.5, vec2(1.0)) - vec2(way, 0.0), clamp(5.0 * (1.0 - a), 0.0, 1.0));
}
