// SPDX-License-Identifier: GPL-3.0-or-later
// Bursts in which lines tear, blocks jump and colours come apart; quiet between them.
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float rate;   // bursts a second
uniform int blocks;   // rows a height of the frame
uniform float colors;

void main() {
    float beat = global_time * rate;
    float own = Hash(int(floor(beat)) + 5);
    float in_ = fract(beat);
    float burst = amount * smoothstep(0.0, 0.08, in_) * (1.0 - smoothstep(0.18 + 0.4 * own, 0.35 + 0.5 * own, in_));
    int step_ = int(floor(global_time * 18.0));
    float rows = float(clamp(blocks, 4, 60));
    int row = int(floor(vTexCoord.y * rows));
    int wide = int(floor(vTexCoord.y * rows * 0.27));
    float torn = step(0.62, Hash(ivec2(row, step_))) * (Hash(ivec2(row + 91, step_)) - 0.5);
    float leap = step(0.7, Hash(ivec2(wide + 400, step_))) * (Hash(ivec2(wide + 17, step_)) - 0.5);
    float shift = burst * (0.1 * torn + 0.22 * leap);
    vec2 uv = vec2(fract(vTexCoord.x + shift), vTexCoord.y);
    vec2 apart = vec2(colors * burst * (0.008 + 0.03 * abs(torn)) / Aspect(), 0.0);
    vec4 c = Input0(uv);
    vec4 r = Input0(Mirror(uv + apart));
    vec4 b = Input0(Mirror(uv - apart));
    vec4 drawn = vec4(r.r, c.g, b.b, max(c.a, max(r.a, b.a)));
    float line = 1.0 - 0.25 * burst * step(0.5, fract(vTexCoord.y * 120.0));
    fragColor = vec4(drawn.rgb * line, drawn.a);
}
