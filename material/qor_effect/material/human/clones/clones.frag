// SPDX-License-Identifier: GPL-3.0-or-later
// People step out of themselves to both sides, each row of them a little smaller and further back.
#include "color.glsl"
#include "easing.glsl"
#include "frame.glsl"

uniform float offsetHalfHuman;  // from one row to the next, in heights of the frame
uniform float midHuman;         // the middle of the person; 0 or 1 where there is none
uniform int pairs;
uniform int mirror;       // 1: those on the left look the other way
uniform float ground;     // where they stand, 0 at the lower edge of the frame
uniform float shrink;    // of each row to the one before it
uniform float opacity;   // of the nearest row
uniform float shade;     // how much darker the rows get
uniform float entrance;  // seconds until all stand in their places

vec4 Clone(vec2 p, float middle, float offset, float size, bool mirrored) {
    vec2 from = vec2(p.x - middle - offset, p.y - ground + 0.5) / size;
    if (mirrored) from.x = -from.x;
    vec2 uv = FromHeightUnits(from + vec2(middle, ground - 0.5));
    return Input1(uv) * FadeAtBorder(uv);
}

const int kMostPairs = 3;

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float middle = (midHuman > 0.0 && midHuman < 1.0 ? midHuman - 0.5 : 0.0) * Aspect();
    float gone = entrance > 0.0 ? EaseOutQuad(clamp(global_time / entrance, 0.0, 1.0)) : 1.0;

    vec4 picture = clip;
    for (int row = min(pairs, kMostPairs); row >= 1; --row) {
        float place = float(row);
        float size = mix(1.0, pow(shrink, place), gone);
        float offset = place * offsetHalfHuman * gone;
        float light = 1.0 - shade * place / float(pairs + 1);
        float cover = opacity * mix(1.0, 0.75, (place - 1.0) / 2.0);
        for (int side = -1; side <= 1; side += 2) {
            vec4 clone = Clone(p, middle, offset * float(side), size, mirror == 1 && side < 0);
            clone.rgb *= light;
            picture = Over(clone * cover, picture);
        }
    }
    // The people themselves stand before all of them.
    fragColor = mix(picture, clip, Input1(vTexCoord).a);
}
