// SPDX-License-Identifier: GPL-3.0-or-later
// Stickers on bodies, one for each person: they lean with the head (or the shoulders) and grow with it.
// A shader gives `vec4 Sticker(vec2 p)`, premultiplied, around the origin, y up, and `StickerReach()`, the
// distance beyond which it is clear. The unit is the distance of the body's two points, as it is on a
// body of natural size: one for the eyes, 5.6 for the shoulders.
#include "frame.glsl"

uniform samplerBuffer stickers;  // anchor x, y (y down), tilt, distance of the points in heights
uniform int stickers_count;
uniform int binding_type;
uniform float size;
uniform float offset_x;  // from the anchor, in units
uniform float offset_y;
uniform float amount;  // opacity

const int kMostStickers = 8;

vec4 Sticker(vec2 p);
float StickerReach();

// Of the sticker that is being drawn: its unit in pixels.
float stickerUnit = 1.0;

// 1 inside a shape (distance below 0), 0 outside, with an edge of one pixel.
float Fill(float distance) { return clamp(0.5 - distance * stickerUnit, 0.0, 1.0); }

// The clip with the stickers on it. A picture at the second input takes the drawing's place: `width`
// units wide, centred on the origin. `cover` hides the stickers where people stand before them.
vec4 WithStickers(float width, float cover) {
    vec4 result = Input0(vTexCoord);
    float natural = binding_type == 1 ? 5.6 : 1.0;
    for (int i = 0; i < kMostStickers; ++i) {
        if (i >= stickers_count) break;
        // The largest person comes first in the list and is drawn last.
        vec4 place = ArrayAt(stickers, stickers_count - 1 - i);
        stickerUnit = max(place.w * uResolution.y * size / natural, 1e-3);
        vec2 anchor = vec2(place.x, 1.0 - place.y);
        vec2 p = Rotate((vTexCoord - anchor) * uResolution / stickerUnit, -place.z);
        p -= vec2(offset_x, offset_y);
        if (length(p) > StickerReach()) continue;
        vec4 drawn;
        if (HasInput1()) {
            vec2 uv = p / width * vec2(1.0, Input1Size().x / Input1Size().y) + 0.5;
            drawn = Input1(uv) * Inside(uv);
        } else {
            drawn = Sticker(p);
        }
        drawn *= amount * (1.0 - cover);
        result = drawn + result * (1.0 - drawn.a);
    }
    return result;
}
