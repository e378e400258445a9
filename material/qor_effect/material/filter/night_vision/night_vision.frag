// SPDX-License-Identifier: GPL-3.0-or-later
// A green light amplifier: bright, grainy, round at its edges.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float gain;
uniform float grain;
uniform float tube;  // the dark round about the picture
uniform int color;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec2 p = ToHeightUnits(vTexCoord);
    float y = 1.0 - exp(-gain * 1.4 * Luma(rgb));
    // Grains of a fixed size, anew 25 times a second.
    ivec2 speck = ivec2(floor(p * 420.0));
    float noise = Hash(ivec3(speck, int(floor(global_time * 25.0)))) - 0.5;
    y += grain * 0.45 * noise * (1.0 - 0.5 * y);
    y *= 0.92 + 0.08 * sin(vTexCoord.y * 1200.0);
    float seen = 1.0 - tube * smoothstep(0.34, 0.52, length(p / vec2(max(Aspect(), 1.0) * 0.72, 1.0)));
    vec3 green = UnpackColor(color) * y * seen + 0.25 * pow(max(y, 0.0), 3.0) * seen;
    fragColor = Premultiplied(mix(rgb, green, amount), c.a);
}
