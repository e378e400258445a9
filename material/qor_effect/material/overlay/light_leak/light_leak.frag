// SPDX-License-Identifier: GPL-3.0-or-later
// Light that falls into a camera that does not close: tongues of it reach in from the sides, red where they
// are thin, then orange, nearly white at the border.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float speed;
uniform float warmth;

// How strongly light enters from one side, `depth` heights of the frame away from it.
float Tongue(float depth, vec2 along) {
    vec3 texel = Input1(along).rgb;
    float reach = 0.08 + 0.75 * smoothstep(0.25, 0.95, max(texel.r, texel.b));
    float near = clamp(1.0 - depth / reach, 0.0, 1.0);
    return near * near * (3.0 - 2.0 * near);
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float drift = 0.08 * speed * global_time;
    float half_width = 0.5 * Aspect();
    float right = Tongue(half_width - p.x, vec2(0.15 + drift, 0.55 * p.y + 0.4 + 0.6 * drift));
    float left = Tongue(half_width + p.x, vec2(0.70 - drift, 0.45 * p.y + 0.8 - 0.8 * drift));
    float breath = 0.86 + 0.14 * sin(global_time * 2.1);
    float heat = clamp(max(right, 0.75 * left), 0.0, 1.0) * amount * breath;
    vec3 cold = vec3(0.95 * heat, 0.42 * heat * heat, 0.75 * heat * heat);
    vec3 warm = vec3(1.10 * heat, 0.62 * heat * heat, 0.30 * heat * heat * heat);
    vec3 light = mix(cold, warm, warmth);
    fragColor = Premultiplied(Screen(Straight(c), clamp(light, 0.0, 1.0)), c.a);
}
