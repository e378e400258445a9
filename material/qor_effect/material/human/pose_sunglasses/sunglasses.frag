// SPDX-License-Identifier: GPL-3.0-or-later
// Sunglasses of a few large squares.
#include "color.glsl"
#include "sticker.glsl"

uniform float tilt;  // degrees, counter-clockwise
uniform int color;

// Both lenses stand over an eye: their middles are nine squares apart.
const float kSquare = 1.0 / 9.0;
const ivec2 kSquares = ivec2(20, 6);
const int kDark[6] = int[](0xFFFFF, 0xFFFFF, 0x3F9FC, 0x3F9FC, 0x3F9FC, 0x1F0F8);  // from the top
const int kGlint[6] = int[](0x00000, 0x00000, 0x0A050, 0x140A0, 0x08040, 0x00000);

bool Has(int row, int column) { return (row >> (kSquares.x - 1 - column) & 1) == 1; }

float StickerReach() { return 2.2; }

// How much of this pixel is dark, or bright: each square is a box with an edge of one pixel.
vec4 Sticker(vec2 place) {
    vec2 p = Rotate(place, -radians(tilt)) / kSquare + 0.5 * vec2(kSquares);
    float pixel = 1.0 / (stickerUnit * kSquare);
    ivec2 square = ivec2(floor(p));
    vec4 drawn = vec4(0.0);
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            ivec2 at = square + ivec2(i, j);
            if (any(lessThan(at, ivec2(0))) || any(greaterThanEqual(at, kSquares))) continue;
            vec2 inside = min(p + 0.5 * pixel, vec2(at) + 1.0) - max(p - 0.5 * pixel, vec2(at));
            vec2 share = clamp(inside / pixel, 0.0, 1.0);
            int row = kSquares.y - 1 - at.y;
            vec4 tone = Has(kGlint[row], at.x) ? vec4(1.0) : Premultiplied(UnpackColor(color), 1.0);
            if (Has(kDark[row], at.x)) drawn += tone * share.x * share.y;
        }
    }
    return drawn;
}

void main() { fragColor = WithStickers(2.2, 0.0); }
