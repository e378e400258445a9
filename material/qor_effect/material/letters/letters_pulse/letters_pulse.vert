// SPDX-License-Identifier: GPL-3.0-or-later
// A beat runs through the text: each letter swells about its middle and sways.
#include "frame.glsl"

in vec3 position;
in vec2 texcoord;
in vec2 center;  // device space

uniform float amount;
uniform float speed;
uniform float crest;  // heights of the frame from beat to beat

out float vShown;
out float vAbove;

void main() {
    vec2 middle = center * vec2(Aspect(), 1.0);
    float phase = 6.2831853 * (global_time * speed - 0.5 * middle.x / crest);
    float beat = pow(0.5 + 0.5 * sin(phase), 3.0);
    vec2 side = position.xy * vec2(Aspect(), 1.0) - middle;
    vec2 p = middle + Rotate(side, amount * 0.07 * cos(phase)) * (1.0 + amount * 0.28 * beat);
    vTexCoord = texcoord;
    vShown = 1.0;
    vAbove = 1.0;
    gl_Position = vec4(p / vec2(Aspect(), 1.0), 0.0, 1.0);
}
