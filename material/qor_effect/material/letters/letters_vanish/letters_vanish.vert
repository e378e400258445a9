// SPDX-License-Identifier: GPL-3.0-or-later
// Letters swell, blur and vanish towards the middle of the effect, and come back the same way.
#include "frame.glsl"

in vec3 position;
in vec2 texcoord;
in vec2 center;  // device space

uniform float amount;
uniform float dt;  // 1 there, 0 gone

out float vShown;
out float vAbove;

void main() {
    float gone = amount * (1.0 - dt);
    vTexCoord = texcoord;
    vShown = 1.0 - gone;
    vAbove = 1.0;
    gl_Position = vec4(center + (position.xy - center) * (1.0 + 0.9 * gone), 0.0, 1.0);
}
