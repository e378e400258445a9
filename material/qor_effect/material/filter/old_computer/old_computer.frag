// SPDX-License-Identifier: GPL-3.0-or-later
// Large pixels, few colours, a pattern between them, and the lines of the screen.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform int lines;    // pixels a height of the frame
uniform int palette;  // 0 sixteen colours, 1 green hand-held, 2 amber, 3 eight levels a channel
uniform float dither;
uniform float scanlines;

float Bayer(ivec2 p) {
    const int kTable[16] = int[](0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5);
    return (float(kTable[(p.y & 3) * 4 + (p.x & 3)]) + 0.5) / 16.0 - 0.5;
}

const vec3 kSixteen[16] = vec3[](
    vec3(0.0), vec3(0.11, 0.17, 0.33), vec3(0.49, 0.15, 0.33), vec3(0.0, 0.53, 0.32),
    vec3(0.67, 0.32, 0.21), vec3(0.37, 0.34, 0.31), vec3(0.76, 0.76, 0.78), vec3(1.0, 0.95, 0.91),
    vec3(1.0, 0.0, 0.3), vec3(1.0, 0.64, 0.0), vec3(1.0, 0.93, 0.15), vec3(0.0, 0.89, 0.21),
    vec3(0.16, 0.68, 1.0), vec3(0.51, 0.46, 0.61), vec3(1.0, 0.47, 0.66), vec3(1.0, 0.8, 0.67));

vec3 Nearest(vec3 c) {
    vec3 best = kSixteen[0];
    float least = 9.0;
    for (int k = 0; k < 16; ++k) {
        vec3 d = (c - kSixteen[k]) * vec3(0.9, 1.2, 0.7);
        float far = dot(d, d);
        if (far < least) { least = far; best = kSixteen[k]; }
    }
    return best;
}

void main() {
    float rows = float(clamp(lines, 60, 480));
    vec2 cells = ToHeightUnits(vTexCoord) * rows;
    ivec2 pixel = ivec2(floor(cells));
    vec2 uv = clamp(FromHeightUnits((floor(cells) + 0.5) / rows), 0.0, 1.0);
    vec4 c = Input0(uv);
    vec3 rgb = Straight(c);
    float pattern = dither * Bayer(pixel + 4096);
    vec3 screen;
    if (palette == 1 || palette == 2) {
        float y = floor(clamp(Luma(rgb) + pattern * 0.3, 0.0, 0.999) * 4.0) / 3.0;
        screen = palette == 1 ? mix(vec3(0.06, 0.22, 0.06), vec3(0.61, 0.74, 0.06), y)
                              : mix(vec3(0.1, 0.03, 0.0), vec3(1.0, 0.72, 0.1), y);
    } else if (palette == 3) {
        screen = floor(clamp(rgb + pattern / 7.0, 0.0, 1.0) * 7.0 + 0.5) / 7.0;
    } else {
        screen = Nearest(rgb + pattern * 0.28);
    }
    float line = 1.0 - scanlines * smoothstep(0.2, 0.5, abs(fract(cells.y) - 0.5)) * 0.7;
    vec4 clip = Input0(vTexCoord);
    vec4 drawn = Premultiplied(screen * line, c.a);
    fragColor = mix(clip, drawn, amount);
}
