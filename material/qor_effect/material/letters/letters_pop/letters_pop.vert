// SPDX-License-Identifier: GPL-3.0-or-later
// Letters jump up from nothing, too large, and spring back.
#include "letters.glsl"

void main() {
    float a = Away();
    Put(TurnedAt(Place(), Middle(), 0.0, vec2(1.0 - a * a * cos(9.0 * (1.0 - a)))), clamp(8.0 * (1.0 - a), 0.0, 1.0));
}
