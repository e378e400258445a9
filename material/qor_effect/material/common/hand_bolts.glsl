// SPDX-License-Identifier: GPL-3.0-or-later
// What the entries with bolts from hands share: colours, the balls of light in the hands, both layers.
#include "bolts.glsl"

uniform float amount;
uniform float dim;  // how dark the rest of the scene gets
uniform int core_color_r, core_color_g, core_color_b;
uniform int glow_color_r, glow_color_g, glow_color_b;
uniform int ball_color_r, ball_color_g, ball_color_b;
uniform float center_x, center_y, center_x2, center_y2;
uniform float showLeftBall, showRightBall;
uniform int ballRadius;     // percent of a fifth of the frame's height
uniform int ballIntensity;  // percent

vec3 CoreColor() { return vec3(core_color_r, core_color_g, core_color_b) / 255.0; }
vec3 GlowColor() { return vec3(glow_color_r, glow_color_g, glow_color_b) / 255.0; }

vec3 HandBalls() {
    float radius = float(ballRadius) * 0.002;
    float light = showLeftBall * BoltBall(vTexCoord, vec2(center_x, center_y), radius) +
                  showRightBall * BoltBall(vTexCoord, vec2(center_x2, center_y2), radius);
    light *= float(ballIntensity) / 100.0;
    vec3 tone = vec3(ball_color_r, ball_color_g, ball_color_b) / 255.0;
    return tone * light + CoreColor() * light * light;
}

// Main bolts in slot 0, their branches in slot 1, as one cover.
vec4 BoltLayer() {
    float cover = Input0(vTexCoord).a;
    float branches = Input1(vTexCoord).a;
    return vec4(cover + branches * (1.0 - cover));
}

// Clip in slot 0, bolts in slot 1, bolts feathered in slot 2.
vec4 BoltsOverClip(vec3 moreLight) {
    vec3 light = BoltLight(Input1(vTexCoord).a, Input2(vTexCoord).a, CoreColor(), GlowColor());
    return Lit(Input0(vTexCoord), light + moreLight, dim, amount);
}
