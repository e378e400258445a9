// SPDX-License-Identifier: GPL-3.0-or-later
// A waving ring slides down a body.
#include "line_light.glsl"

void main() { fragColor = LineLight(); }
