// SPDX-License-Identifier: GPL-3.0-or-later
// The cut comes in bursts: blocks and lines of the second clip flash up, colours come apart.
#include "noise.glsl"
#include "transition.glsl"

uniform float amount;
uniform int blocks;    // a height of the frame
uniform float colors;  // how far the colours come apart

void main() {
    float t = Progress();
    float burst = 4.0 * t * (1.0 - t);
    int step_ = int(floor(global_time * 16.0));
    vec2 p = ToHeightUnits(vTexCoord);
    float rows = float(clamp(blocks, 2, 40));
    ivec2 block = ivec2(floor(vec2(p.x * rows * 0.35, p.y * rows) + 100.0));
    float rowNoise = Hash(ivec2(block.y, step_));
    float blockNoise = Hash(ivec3(block, step_));
    float torn = step(1.0 - 0.7 * burst, rowNoise);
    float shift = amount * 0.22 * burst * torn * (Hash(ivec2(block.y + 57, step_)) - 0.5);
    vec2 uv = fract(vTexCoord + vec2(shift, 0.0));
    float second = step(1.0 - smoothstep(0.08, 0.92, t), mix(blockNoise, rowNoise, 0.35));
    float apart = colors * 0.02 * burst * (0.4 + torn) / Aspect();
    vec2 left = vec2(fract(uv.x - apart), uv.y);
    vec2 right = vec2(fract(uv.x + apart), uv.y);
    vec4 c = mix(Input0(uv), Input1(uv), second);
    c.r = mix(Input0(left), Input1(left), second).r;
    c.b = mix(Input0(right), Input1(right), second).b;
    c.rgb = min(c.rgb * (1.0 + 0.5 * amount * burst * torn), c.a);
    fragColor = Exact(c);
}
