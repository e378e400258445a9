// SPDX-License-Identifier: GPL-3.0-or-later
// Darkens (or tints) the picture towards its corners.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;     // 0 none, 1 full colour in the corners
uniform float radius;     // where the shade is half way, as a part of the way to the corner
uniform float softness;   // width of the shade, same unit
uniform float roundness;  // 0 follows the shape of the frame, 1 is a circle
uniform int color;

void main() {
    vec2 shape = vec2(mix(1.0, Aspect(), roundness), 1.0);
    float toCorner = length((vTexCoord - 0.5) * 2.0 * shape) / length(shape);
    float shade = amount * smoothstep(radius - 0.5 * softness, radius + 0.5 * softness, toCorner);
    vec4 c = Input0(vTexCoord);
    fragColor = Premultiplied(mix(Straight(c), UnpackColor(color), shade), c.a);
}
