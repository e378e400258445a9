// SPDX-License-Identifier: GPL-3.0-or-later
// Letters rise from behind the line that they stand on.
#include "letters.glsl"

void main() {
    float a = Away();
    vec2 up = Head() - Foot();
    Put(Place() - 1.05 * a * a * up, 1.0);
    if (!IsWholeFrame()) vAbove = dot(Place() - 1.05 * a * a * up - Foot(), normalize(up + vec2(0.0, 1e-6)));
}
