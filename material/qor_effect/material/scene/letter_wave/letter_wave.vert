// SPDX-License-Identifier: GPL-3.0-or-later
// A wave runs through the letters of a text: each hops, leans into it and is squeezed when it lands.
#include "frame.glsl"

in vec3 position;
in vec2 texcoord;
in vec4 matrix_column0, matrix_column1, matrix_column2, matrix_column3;

uniform float amount;
uniform float speed;
uniform float height;  // of a hop, in heights of the frame
uniform float turn;    // degrees
uniform float crest;   // letters from crest to crest

flat out vec4 vPlace;  // the letter's own, so that nothing of its neighbours comes along

void main() {
    vTexCoord = texcoord;
    float letter = float(gl_VertexID / 6);
    float phase = 6.2831853 * (global_time * speed * 0.7 - letter / crest);
    float up = sin(phase);
    float hop = amount * height * (up > 0.0 ? up : 0.25 * up);
    float lean = amount * radians(turn) * cos(phase);
    float squeeze = 1.0 - 0.16 * amount * max(-up, 0.0);
    mat4 host = mat4(matrix_column0, matrix_column1, matrix_column2, matrix_column3);
    vec4 at = host * vec4(position, 1.0);
    // Letters turn about a place below the line, near enough the same for all of them.
    vec2 p = at.xy * vec2(Aspect(), 1.0);
    float foot = -0.12;
    p.y = foot + (p.y - foot) * squeeze;
    p += vec2(-sin(lean) * (p.y - foot), 2.0 * hop);
    gl_Position = vec4(p / vec2(Aspect(), 1.0), 0.0, 1.0);
}
