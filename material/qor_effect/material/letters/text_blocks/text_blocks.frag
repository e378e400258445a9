// SPDX-License-Identifier: GPL-3.0-or-later
// A text builds up out of small blocks, from left to right with some chance, each of which lights up and
// makes room for the letters behind it.
#include "color.glsl"
#include "noise.glsl"

uniform float amount;
uniform float Intro;  // seconds
uniform float sweep;  // 0 by chance alone, 1 strictly from left to right
uniform int color;
uniform float roiX, roiWidth;
uniform float blockSizeX;

void main() {
    vec4 clip = Input0(vTexCoord);
    float done = Intro > 0.0 ? clamp(global_time / Intro, 0.0, 1.0) : 1.0;
    ivec2 size = textureSize(uInput2, 0);
    vec4 code = texelFetch(uInput2, clamp(ivec2(vTexCoord * vec2(size)), ivec2(0), size - 1), 0);
    int number = int(dot(code, vec4(255.0)) + 0.5);
    float column = clamp((vTexCoord.x - roiX) / max(roiWidth, 1e-4), 0.0, 1.0);
    column = floor(column / blockSizeX) * blockSizeX;
    float turn = mix(Hash(number), column, sweep);
    // What lies between the blocks comes with the last of its column.
    float own = clamp((done * 1.5 - (number > 0 ? turn : max(column, turn))) / 0.5, 0.0, 1.0);
    vec4 block = number > 0 ? Input1(vTexCoord).a * vec4(UnpackColor(color), 1.0) : vec4(0.0);
    float lit = smoothstep(0.0, 0.15, own);
    vec4 shown = mix(block * lit, clip, number > 0 ? smoothstep(0.45, 1.0, own) : smoothstep(0.8, 1.0, own));
    fragColor = mix(clip, shown, amount * step(done, 0.9999));
}
