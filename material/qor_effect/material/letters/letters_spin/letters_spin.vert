// SPDX-License-Identifier: GPL-3.0-or-later
// Letters turn about themselves as they grow.
#include "letters.glsl"

uniform float turns;

void main() {
    float a = Away();
    Put(TurnedAt(Place(), Middle(), 6.2831853 * turns * a * a, vec2(1.0 - a * a)), clamp(3.0 * (1.0 - a), 0.0, 1.0));
}
