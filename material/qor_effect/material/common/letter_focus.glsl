// SPDX-License-Identifier: GPL-3.0-or-later
// Letters come from before the lens into focus, from a wider setting into the text's own, or leave so.
#include "letters.glsl"

uniform float dstAlpha;
uniform vec2 globalTextCenter;

void main() {
    float gone = IsWholeFrame() ? 0.0 : amount * (1.0 - dstAlpha);
    vec2 p = TurnedAt(Place(), Middle(), 0.0, vec2(1.0 + 0.6 * gone));
    Put(p + 0.8 * gone * gone * (Middle() - globalTextCenter), 1.0 - gone);
}
