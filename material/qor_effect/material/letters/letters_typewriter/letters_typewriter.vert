// SPDX-License-Identifier: GPL-3.0-or-later
// One letter after the other is struck, a little too hard.
#include "letters.glsl"

void main() {
    float a = Away();
    Put(TurnedAt(Place(), Middle(), 0.0, vec2(1.0 + 0.35 * a)), a > 0.999 ? 0.0 : 1.0);
}
