// SPDX-License-Identifier: GPL-3.0-or-later
// The picture out of signs: denser signs where it is brighter.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform int rows;       // of signs
uniform float colored;  // 0: one green, 1: the picture's colours
uniform int background;

// Signs of 5 x 5 dots, the top left one in the highest of 25 bits: . : - = + * % # @ and a block.
const int kSigns[10] = int[](0x0000004, 0x0020080, 0x0007C00 >> 3, 0x00F83E0 >> 2, 0x0427C84, 0x15739D5,
                             0x1989233, 0x0AFABEA, 0x0E9D5CE, 0x1FFFFFF);

float Sign(int index, vec2 at) {
    ivec2 dot_ = ivec2(floor(at * 7.0)) - 1;
    if (dot_.x < 0 || dot_.x > 4 || dot_.y < 0 || dot_.y > 4) return 0.0;
    int bit = 24 - ((4 - dot_.y) * 5 + dot_.x);
    return float((kSigns[index] >> bit) & 1);
}

void main() {
    float count = float(clamp(rows, 20, 160));
    vec2 cells = ToHeightUnits(vTexCoord) * vec2(count * 1.25, count);
    vec2 middle = (floor(cells) + 0.5) / vec2(count * 1.25, count);
    vec2 uv = clamp(FromHeightUnits(middle), 0.0, 1.0);
    vec2 quarter = 0.25 / vec2(count * 1.25 * Aspect(), count);
    vec4 c = 0.25 * (Input0(uv + quarter) + Input0(uv - quarter) + Input0(uv + vec2(quarter.x, -quarter.y)) +
                     Input0(uv + vec2(-quarter.x, quarter.y)));
    vec3 rgb = Straight(c);
    float y = pow(Luma(rgb), 0.8);
    int index = clamp(int(y * 11.0) - 1, -1, 9);
    // Four readings smooth the dots' edges.
    float ink = 0.0;
    vec2 pixel = vec2(count * 1.25, count) / uResolution.y * 0.25;
    if (index >= 0) {
        vec2 in_ = fract(cells);
        ink = 0.25 * (Sign(index, in_ + pixel) + Sign(index, in_ - pixel) +
                      Sign(index, in_ + vec2(pixel.x, -pixel.y)) + Sign(index, in_ + vec2(-pixel.x, pixel.y)));
    }
    vec3 lit = mix(vec3(0.25, 1.0, 0.4), rgb / max(max(rgb.r, max(rgb.g, rgb.b)), 0.25), colored);
    vec4 drawn = Premultiplied(mix(UnpackColor(background), lit, ink), c.a);
    fragColor = mix(Input0(vTexCoord), drawn, amount);
}
