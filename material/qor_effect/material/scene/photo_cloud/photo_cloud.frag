// SPDX-License-Identifier: GPL-3.0-or-later
// Photo cards with a white border; from afar they make up the picture that they came from.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float duration;
uniform float likeness;  // how much a card takes on the colour of its place in the clip
uniform float photoCount;
uniform samplerBuffer photoSize;

in vec2 vPlace;
flat in float vOwn;
flat in float vBackdrop;
flat in vec4 vOwnColor;
in float vShade;

vec4 Photo(vec2 uv) {
    int which = int(vOwn * max(photoCount, 1.0));
    if (photoCount < 0.5) return Input0(uv);
    if (which == 0) return Input1(FlipV(uv));
    if (which == 1) return Input2(FlipV(uv));
    return Input3(FlipV(uv));
}

void main() {
    if (vBackdrop > 0.5) {
        // The picture that is left behind goes dark while its cards leave it.
        vec4 clip = Input0(vTexCoord);
        float left = smoothstep(0.05, 0.9, global_time / duration) * amount;
        fragColor = vec4(clip.rgb * (1.0 - 0.85 * left), clip.a);
        return;
    }
    vec2 border = vec2(0.07, 0.09);
    vec2 in_photo = (vTexCoord - border) / (1.0 - 2.0 * border);
    vec2 pixel = fwidth(in_photo);
    vec2 edge = smoothstep(-pixel, pixel, in_photo) * smoothstep(-pixel, pixel, 1.0 - in_photo);
    // A card shows a good part of the clip around its place.
    vec2 window = mix(vPlace, vec2(0.5), 0.7) + (in_photo - 0.5) * 0.7;
    vec3 photo = Straight(photoCount < 0.5 ? Input0(window) : Photo(in_photo));
    photo = mix(photo, Straight(vOwnColor) * (0.35 + 1.1 * Luma(photo)), likeness);
    vec3 card = mix(vec3(0.97, 0.96, 0.93), photo, edge.x * edge.y);
    fragColor = Premultiplied(card * vShade, amount);
}
