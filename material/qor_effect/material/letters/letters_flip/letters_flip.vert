// SPDX-License-Identifier: GPL-3.0-or-later
// Letters open like doors, in perspective.
#include "letters.glsl"

void main() {
    float a = Away();
    float angle = 1.65 * a * a;
    vec2 side = Place() - Middle();
    float near = 1.0 + 0.9 * sin(angle) * side.x;
    Put(Middle() + vec2(side.x * cos(angle), side.y) / near, clamp(4.0 * (1.0 - a), 0.0, 1.0));
    gl_Position *= near;
}
