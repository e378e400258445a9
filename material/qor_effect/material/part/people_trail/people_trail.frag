// SPDX-License-Identifier: GPL-3.0-or-later
// The shape of people over what is left of their shapes before. The alpha of the trail falls evenly,
// so that it tells the age.
#include "color.glsl"
#include "frame.glsl"

uniform int uAccum;   // 0: the shape alone; 1: with its trail
uniform int uTicks;   // since the last picture
uniform int color_r, color_g, color_b;
uniform float trail;     // seconds that a shape stays
uniform float motion_x;  // heights of the frame in a second
uniform float motion_y;
uniform float growth;    // of the trail in a second, about the middle of the lower edge

const float kTicksPerSecond = 25.0;
const vec2 kFoot = vec2(0.0, -0.5);

void main() {
    if (uAccum == 0) {
        fragColor = vec4(smoothstep(0.25, 0.75, texture(uInput0, vTexCoord).b));
        return;
    }
    float seconds = float(uTicks) / kTicksPerSecond;
    vec2 p = ToHeightUnits(vTexCoord) - vec2(motion_x, motion_y) * seconds - kFoot;
    vec2 uv = FromHeightUnits(p / pow(max(growth, 0.01), seconds) + kFoot);
    vec4 past = Input1(uv) * Inside(uv);
    float left = max(past.a - seconds / max(trail, 0.04), 0.0);
    past *= past.a > 0.0 ? left / past.a : 0.0;
    float now = Input0(vTexCoord).a;
    fragColor = Over(vec4(vec3(color_r, color_g, color_b) / 255.0, 1.0) * now, past);
}
