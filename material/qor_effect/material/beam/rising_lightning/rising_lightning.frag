// SPDX-License-Identifier: GPL-3.0-or-later
// Bars of lightning rise through a body.
#include "line_light.glsl"

void main() { fragColor = LineLight(); }
