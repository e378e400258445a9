// SPDX-License-Identifier: GPL-3.0-or-later
#include "color.glsl"
#include "dot.glsl"

flat in vec4 vGrain;
flat in float vPixels;

void main() {
    fragColor = Premultiplied(vGrain.rgb, vGrain.a * DotCover(2.0 * vTexCoord - 1.0, vPixels));
}
