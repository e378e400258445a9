// SPDX-License-Identifier: GPL-3.0-or-later
// Coloured light that drifts over the picture, as from a camera that does not close.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float speed;
uniform float warmth;

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 drift = vec2(0.11, 0.023) * speed * global_time;
    vec3 leak = Input1(vTexCoord * vec2(0.55, 0.8) + drift).rgb;
    vec3 second = Input1(vec2(1.0 - vTexCoord.x, vTexCoord.y) * vec2(0.4, 0.7) - drift * 0.7 + 0.37).rgb;
    leak = max(leak, second * 0.6);
    leak = mix(leak, leak * vec3(1.25, 0.85, 0.55), warmth);
    float breath = 0.85 + 0.15 * sin(global_time * 2.1);
    vec3 rgb = Screen(Straight(c), clamp(leak * amount * breath, 0.0, 1.0));
    fragColor = Premultiplied(rgb, c.a);
}
