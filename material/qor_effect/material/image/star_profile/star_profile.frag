// SPDX-License-Identifier: GPL-3.0-or-later
// Slot 1 is the star picture, upright.
vec4 StarPicture(vec2 uv) { return Input1(uv); }
#include "../star_highlights/stars.glsl"
