// SPDX-License-Identifier: GPL-3.0-or-later
// The outlines of what stands out draw themselves in light.
#include "line_light.glsl"

void main() { fragColor = LineLight(); }
