// SPDX-License-Identifier: GPL-3.0-or-later
// Letters fly in from beyond the frame and brake.
#include "letters.glsl"

uniform float angle;  // degrees: where they come from

void main() {
    float a = Away();
    float way = a * a * a * (2.0 * Aspect() + 1.0);
    Put(Place() + way * vec2(cos(radians(angle)), sin(radians(angle))), clamp(5.0 * (1.0 - a), 0.0, 1.0));
}
