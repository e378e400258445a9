// SPDX-License-Identifier: GPL-3.0-or-later
// The picture as relief in grey stone, or in its own colours.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float angle;  // degrees; where the light comes from
uniform float depth;
uniform float width;  // in heights of the frame
uniform float color;  // 0 stone, 1 the picture's colours

void main() {
    vec2 d = max(width, 0.75 / uResolution.y) * vec2(cos(radians(angle)), sin(radians(angle))) / vec2(Aspect(), 1.0);
    vec4 c = Input0(vTexCoord);
    float rise = Luma(Straight(Input0(vTexCoord - d))) - Luma(Straight(Input0(vTexCoord + d)));
    float light = clamp(0.5 - depth * rise * 0.8, 0.0, 1.0);
    vec3 rgb = Straight(c);
    vec3 relief = mix(vec3(light), Overlay(rgb, vec3(light)), color);
    fragColor = Premultiplied(mix(rgb, relief, amount), c.a);
}
