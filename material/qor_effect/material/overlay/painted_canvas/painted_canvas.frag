// SPDX-License-Identifier: GPL-3.0-or-later
// The picture as paint on a woven canvas: colours in strokes, the weave showing through.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;  // of all of it
uniform float scale;   // of the weave
uniform float weave;   // how clearly the canvas shows through
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
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x) {
                vec3 s = Straight(Input0(uv + side * vec2(x, y) * step));
                sum += s;
                squares += s * s;
            }
        }
        sum /= 16.0;
        float spread = dot(squares / 16.0 - sum * sum, vec3(1.0));
        if (spread < least) {
            least = spread;
            best = sum;
        }
    }
    return best;
}

void main() {
    vec4 c = Input0(vTexCoord);
    if (amount <= 0.0) {
        fragColor = c;
        return;
    }
    vec3 rgb = Straight(c);
    vec3 drawn = rgb;
    if (paint > 0.0) drawn = mix(rgb, Painted(vTexCoord, 0.0036), paint);
    // Threads finer than two pixels would beat against them: an even ground instead.
    float room = smoothstep(180.0, 540.0, uResolution.y * scale);
    vec2 p = ToHeightUnits(vTexCoord) * 3.6 / scale;
    float thread = mix(0.5, Input1(p).g, room * weave);
    drawn = Overlay(drawn, vec3(mix(0.5, thread, 0.5)));
    fragColor = Premultiplied(mix(rgb, drawn, amount), c.a);
}
