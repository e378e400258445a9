// SPDX-License-Identifier: GPL-3.0-or-later
// Stickers on a body. The unit of a sticker is one eye distance of a body of natural size, a twentieth of
// the frame's width; the effect tells how much larger this body is. Origin at the body's anchor, y up.

uniform int anchor_point_x;  // pixels of the clip, y down
uniform int anchor_point_y;
uniform float scale_x;
uniform float scale_y;
uniform float size;
uniform float offset_x;  // from the anchor, in units
uniform float offset_y;
uniform float amount;  // opacity

vec2 StickerUnit() { return 0.05 * uResolution.x * size * vec2(scale_x, scale_y); }

// The place of this pixel on the sticker, in units.
vec2 StickerPlace() {
    vec2 clip = Input0Size();
    vec2 anchor = vec2(float(anchor_point_x) / clip.x, 1.0 - float(anchor_point_y) / clip.y);
    vec2 unit = max(StickerUnit(), 1e-3);
    return (vTexCoord - anchor) * uResolution / unit - vec2(offset_x, offset_y);
}

// One pixel in units: the width of a smooth edge.
float StickerPixel() { return 1.0 / max(StickerUnit().y, 1e-3); }

// 1 inside a shape (distance below 0), 0 outside.
float Fill(float distance) { return clamp(0.5 - distance / StickerPixel(), 0.0, 1.0); }

// The clip with the sticker (premultiplied) on it. A picture at the second input takes the drawing's
// place: `width` units wide, centred on the origin.
vec4 WithSticker(vec4 drawn, float width) {
    vec4 clip = Input0(vTexCoord);
    if (scale_x <= 0.0 || scale_y <= 0.0) return clip;
    if (HasInput1()) {
        vec2 uv = StickerPlace() / width * vec2(1.0, Input1Size().x / Input1Size().y) + 0.5;
        vec2 inside = step(vec2(0.0), uv) * step(uv, vec2(1.0));
        drawn = Input1(uv) * inside.x * inside.y;
    }
    drawn *= amount;
    return drawn + clip * (1.0 - drawn.a);
}
