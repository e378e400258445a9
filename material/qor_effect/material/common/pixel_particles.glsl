// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels as dots: one instance each, of which this places the quad of its first step.
#include "dot.glsl"
#include "pixel_flight.glsl"

in vec4 position;
in vec3 texcoord;  // corner -1..1
uniform samplerBuffer uStartEndData;
uniform samplerBuffer uColor;
uniform float uRadius;  // thousandths of the frame's height
uniform float uDuration, uLifetime, uAmount;
uniform float uBoundLeftX, uBoundRightX;
uniform int uReverse;

flat out vec4 vDot;      // straight colour, cover
flat out float vPixels;  // radius

vec2 Home() { return ArrayAt(uStartEndData, gl_InstanceID).xy; }
float Own(int which) { return Hash(ivec2(gl_InstanceID, which)); }
float FlightOf(vec2 home) {
    return Flight(home.x, Own(0), uBoundLeftX, uBoundRightX, uDuration, uLifetime, uReverse);
}

// A dot at a place (height units) with a share of its cover and size.
void PutPixel(vec2 place, float cover, float size) {
    vDot = vec4(ArrayAt(uColor, gl_InstanceID).rgb, cover);
    float radius = uRadius / 1000.0 * size;
    vPixels = radius * uResolution.y;
    vTexCoord = 0.5 * texcoord.xy + 0.5;
    vec2 corner = place + texcoord.xy * radius * DotRoom(vPixels);
    // Only the first step of the line is a dot.
    bool shown = cover > 0.0 && position.x < 0.5;
    gl_Position = shown ? vec4(2.0 * corner / vec2(Aspect(), 1.0), 0.0, 1.0) : vec4(2.0, 2.0, 0.0, 1.0);
}
