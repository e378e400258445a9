// SPDX-License-Identifier: GPL-3.0-or-later
// Letters fall in as long thin lines and spring into shape.
#include "letters.glsl"

void main() {
    float a = Away();
    float spring = a * a * cos(7.0 * (1.0 - a));
    Put(TurnedAt(Place(), Foot(), 0.0, vec2(1.0 - 0.8 * a * a, 1.0 + 5.0 * spring)), clamp(3.0 * (1.0 - a), 0.0, 1.0));
}
