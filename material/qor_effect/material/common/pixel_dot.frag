// SPDX-License-Identifier: GPL-3.0-or-later
#include "color.glsl"
#include "dot.glsl"

flat in vec4 vDot;
flat in float vPixels;

void main() { fragColor = Premultiplied(vDot.rgb, vDot.a * DotCover(2.0 * vTexCoord - 1.0, vPixels)); }
