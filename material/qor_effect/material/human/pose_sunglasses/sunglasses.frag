// SPDX-License-Identifier: GPL-3.0-or-later
// Sunglasses of a few large squares.
#include "color.glsl"
#include "frame.glsl"
#include "sticker.glsl"

uniform float tilt;  // degrees, counter-clockwise
uniform int color;

// Both lenses stand over an eye: their middles are nine squares apart.
const float kSquare = 1.0 / 9.0;
const ivec2 kSquares = ivec2(20, 6);
const int kDark[6] = int[](0xFFFFF, 0xFFFFF, 0x3F9FC, 0x3F9FC, 0x3F9FC, 0x1F0F8);  // from the top
const int kGlint[6] = int[](0x00000, 0x00000, 0x0A050, 0x140A0, 0x08040, 0x00000);

bool Has(int row, int column) { return (row >> (kSquares.x - 1 - column) & 1) == 1; }

void main() {
    vec2 p = Rotate(StickerPlace(), -radians(tilt)) / kSquare + 0.5 * vec2(kSquares);
    ivec2 square = ivec2(floor(p));
    vec4 drawn = vec4(0.0);
    if (all(greaterThanEqual(square, ivec2(0))) && all(lessThan(square, kSquares))) {
        int row = kSquares.y - 1 - square.y;
        if (Has(kDark[row], square.x)) drawn = Premultiplied(UnpackColor(color), 1.0);
        if (Has(kGlint[row], square.x)) drawn = vec4(1.0);
    }
    fragColor = WithSticker(drawn, 2.2);
}
