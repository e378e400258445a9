// SPDX-License-Identifier: GPL-3.0-or-later
// A text that forms out of a blur, its letters drawn apart, and goes the same way.
#include "letters.glsl"

uniform float dt;  // 1 gone, 0 in place
uniform float dstAlpha;
uniform vec2 globalTextCenter;

void main() { Put(Place() + 0.5 * amount * dt * dt * (Middle() - globalTextCenter), mix(1.0, dstAlpha, amount)); }
