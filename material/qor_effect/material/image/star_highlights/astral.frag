// SPDX-License-Identifier: GPL-3.0-or-later
// Slot 1 is the star picture, which comes by the road of a clip: upside down.
vec4 StarPicture(vec2 uv) { return Input1(FlipV(uv)); }
#include "stars.glsl"
