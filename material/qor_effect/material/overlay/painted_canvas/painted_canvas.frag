// SPDX-License-Identifier: GPL-3.0-or-later
// The picture as paint on a woven canvas: colours in strokes, the weave showing through.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;  // of the weave
uniform float scale;   // of the weave
uniform float paint;   // how far the picture dissolves into strokes

// The quietest of four neighbourhoods: flat strokes with sharp borders.
vec3 Painted(vec2 uv, float radius) {
    vec2 step = vec2(radius / Aspect(), radius);
    vec3 best = vec3(0.0);
    float least = 1e9;
    for (int q = 0; q < 4; ++q) {
        vec2 side = vec2((q & 1) * 2 - 1, (q >> 1) * 2 - 1);
        vec3 sum = vec3(0.0);
        vec3 squares = vec3(0.0);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 3; ++x) {
                vec3 s = Straight(Input0(uv + side * vec2(x, y) * step));
                sum += s;
                squares += s * s;
            }
        }
        sum /= 9.0;
        float spread = dot(squares / 9.0 - sum * sum, vec3(1.0));
        if (spread < least) {
            least = spread;
            best = sum;
        }
    }
    return best;
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    if (paint > 0.0) rgb = mix(rgb, Painted(vTexCoord, 0.004), paint);
    vec2 p = ToHeightUnits(vTexCoord) * 2.5 / scale;
    float weave = Input1(p).g;
    rgb = mix(rgb, Overlay(rgb, vec3(weave)), amount);
    fragColor = Premultiplied(rgb, c.a);
}
