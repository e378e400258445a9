// SPDX-License-Identifier: GPL-3.0-or-later
// A text draws itself as a neon tube.
#include "line_light.glsl"

void main() { fragColor = LineLight(); }
