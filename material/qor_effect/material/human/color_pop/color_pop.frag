// SPDX-License-Identifier: GPL-3.0-or-later
// People in colour before a background in black and white.
#include "color.glsl"
#include "person.glsl"

uniform float amount;
uniform float vividness;   // of the people's colours beyond their own
uniform float contrast;    // of the background
uniform float brightness;  // of the background
uniform int tint;          // of the background: white is none, brown makes it an old photograph

void main() {
    vec4 clip = Input0(vTexCoord);
    vec3 rgb = Straight(clip);
    float grey = Luma(rgb);
    vec3 background = clamp((grey - 0.5) * contrast + 0.5 + brightness, 0.0, 1.0) * UnpackColor(tint);
    // What is grey stays grey, and what is strong has no room left.
    float strong = max(rgb.r, max(rgb.g, rgb.b)) - min(rgb.r, min(rgb.g, rgb.b));
    vec3 people = mix(vec3(grey), rgb, 1.0 + vividness * (1.0 - strong));
    vec3 popped = mix(background, clamp(people, 0.0, 1.0), Person(vTexCoord));
    fragColor = Premultiplied(mix(rgb, popped, amount), clip.a);
}
