// SPDX-License-Identifier: GPL-3.0-or-later
// Red and blue stand beside the picture.
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;  // in heights of the frame
uniform float angle;   // degrees
uniform float shake;   // how much the distance trembles

void main() {
    float tremble = mix(1.0, 0.2 + 1.6 * ValueNoise(vec2(global_time * 9.0, 3.0)), shake);
    vec2 d = amount * tremble * vec2(cos(radians(angle)), sin(radians(angle))) / vec2(Aspect(), 1.0);
    vec4 c = Input0(vTexCoord);
    vec4 r = Input0(vTexCoord + d);
    vec4 b = Input0(vTexCoord - d);
    fragColor = vec4(r.r, c.g, b.b, max(c.a, max(r.a, b.a)));
}
