// SPDX-License-Identifier: GPL-3.0-or-later
// Letters drift up out of a mist, or away in it.
#include "letters.glsl"

uniform float dstAlpha;

void main() {
    float gone = IsWholeFrame() ? 0.0 : amount * (1.0 - dstAlpha);
    float drift = sin(3.0 * gone + 1.7 * float(Letter())) * 0.06 * gone;
    Put(Place() + vec2(drift, (Intro > 0.0 ? -0.22 : 0.22) * gone * (0.5 + Hash(Letter()))), 1.0 - gone);
}
