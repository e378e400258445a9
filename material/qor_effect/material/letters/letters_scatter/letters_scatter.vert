// SPDX-License-Identifier: GPL-3.0-or-later
// Letters gather from all over the frame, turning.
#include "letters.glsl"

void main() {
    float a = Away();
    float far = a * a;
    float turn = 6.2831853 * Hash(3 * Letter());
    vec2 from = vec2(cos(turn), sin(turn)) * (0.7 + 1.4 * Hash(3 * Letter() + 1)) * vec2(Aspect(), 1.0);
    float spin = 5.0 * (Hash(3 * Letter() + 2) - 0.5);
    Put(TurnedAt(Place(), Middle(), spin * far, vec2(1.0 + 0.8 * far)) + from * far, clamp(3.0 * (1.0 - a), 0.0, 1.0));
}
