// SPDX-License-Identifier: GPL-3.0-or-later
// Letters hang from their tops and swing until they hang still.
#include "letters.glsl"

void main() {
    float a = Away();
    float angle = 1.7 * a * a * cos(12.0 * (1.0 - a));
    Put(TurnedAt(Place(), Head(), angle, vec2(1.0)), clamp(6.0 * (1.0 - a), 0.0, 1.0));
}
