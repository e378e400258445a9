// SPDX-License-Identifier: GPL-3.0-or-later
// Letters come from before the screen, large and faint, and settle in the text.
#include "letters.glsl"

uniform float zoom;  // times their size

void main() {
    float a = Away();
    Put(TurnedAt(Place(), Middle(), 0.0, vec2(1.0 + (zoom - 1.0) * a * a)), (1.0 - a) * (1.0 - a * a));
}
