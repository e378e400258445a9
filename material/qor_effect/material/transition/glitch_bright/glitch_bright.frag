// SPDX-License-Identifier: GPL-3.0-or-later
// The picture breaks into blocks that jump, split their colours and drop bits; the bright and dark ends of the
// clip, measured on the frame, decide what breaks first.
#include "color.glsl"
#include "noise.glsl"
#include "progress.glsl"

uniform float amount;
uniform float blocks;   // along the height of the frame
uniform float minGray;  // darkest and brightest levels of the clip
uniform float maxGray;

vec4 Clip(bool second, vec2 uv) { return second ? Input1(uv) : Input0(uv); }

void main() {
    float t = Progress();
    float strength = amount * (1.0 - abs(2.0 * t - 1.0));
    if (strength <= 0.0) {
        fragColor = t < 0.5 ? Input0(vTexCoord) : Input1(vTexCoord);
        return;
    }
    int beat = int(floor(global_time * 15.0));
    float rows = blocks * (0.5 + Hash(beat));
    int row = int(floor(vTexCoord.y * rows));
    ivec2 cell = ivec2(floor(vTexCoord * vec2(rows * 1.6, rows)));
    float rowChance = Hash(ivec3(row, beat, 1));
    float cellChance = Hash(ivec3(cell, beat));
    vec2 shift = vec2(0.0);
    if (rowChance < strength * 0.8) shift.x += (Hash(ivec3(row, beat, 2)) - 0.5) * 0.35 * strength;
    if (cellChance < strength * 0.45) shift += (vec2(Hash(ivec3(cell, beat + 5)), Hash(ivec3(cell, beat + 9))) - 0.5) * 0.25 * strength;
    // Near the middle some blocks show the other clip already or still.
    bool second = t > 0.5;
    if (Hash(ivec3(cell, beat + 13)) < strength * strength * 0.5) second = !second;
    vec2 uv = fract(vTexCoord + shift);
    float split = 0.02 * strength * (Hash(beat + 3) - 0.3);
    vec4 c = Clip(second, uv);
    vec4 left = Clip(second, uv - vec2(split, 0.0));
    vec4 right = Clip(second, uv + vec2(split, 0.0));
    vec3 rgb = vec3(left.r, c.g, right.b);
    // Stretch what the clip has from its darkest to its brightest, then drop bits.
    vec3 level = clamp((rgb - minGray) / max(maxGray - minGray, 0.05), 0.0, 1.0);
    if (cellChance > 1.0 - strength * 0.35) rgb = floor(level * 4.0 + 0.5) / 4.0;
    if (Hash(ivec3(row, beat, 7)) > 1.0 - strength * 0.12) rgb = level.gbr;
    float alpha = max(c.a, max(left.a, right.a));
    fragColor = vec4(min(rgb, alpha), alpha);
}
