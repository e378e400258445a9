// SPDX-License-Identifier: GPL-3.0-or-later
// People fall apart into blocks of themselves behind them.
#include "noise.glsl"
#include "trail.glsl"

uniform float amount;
uniform float size;  // of a block, in heights of the frame
uniform float tint;  // how much of the colour the blocks take
uniform int color;

void main() {
    vec4 clip = Input0(vTexCoord);
    ivec2 cell = ivec2(floor(ToHeightUnits(vTexCoord) / size));
    vec2 middle = FromHeightUnits((vec2(cell) + 0.5) * size);
    float fresh = Trail(middle).a;
    float chance = Hash(ivec3(cell, int(floor(Seconds() * 8.0))));
    float stays = step(chance, fresh * 1.15 - 0.05);
    vec3 block = Straight(Input0(middle));
    vec3 tone = mix(block * 1.15, UnpackColor(color) * (0.35 + 0.9 * Luma(block)), tint);
    tone += 0.25 * (1.0 - fresh) * UnpackColor(color);
    fragColor = BehindPeople(clip, Premultiplied(tone, amount * stays * smoothstep(0.0, 0.2, fresh)));
}
